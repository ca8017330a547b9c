// The reference in docs/devserver.md equals the comments of proto/scenario.proto. ZR_UPDATE_DOCS=1 rewrites it.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <google/protobuf/descriptor.pb.h>

#include <QFile>
#include <QString>

#include "scenario.pb.h"

namespace {

using google::protobuf::Descriptor;
using google::protobuf::FieldDescriptor;
using google::protobuf::SourceLocation;

constexpr const char* kBegin = "<!-- generated from proto/scenario.proto -->\n";
constexpr const char* kEnd = "<!-- end -->\n";

/// The schema with its comments, which the server's descriptors do not have.
const google::protobuf::FileDescriptor* Documented(google::protobuf::DescriptorPool& pool) {
    QFile file(QStringLiteral(ZR_SCENARIO_DESCRIPTORS));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    google::protobuf::FileDescriptorSet set;
    EXPECT_TRUE(set.ParseFromString(file.readAll().toStdString()));
    for (const auto& proto : set.file()) {
        EXPECT_TRUE(pool.BuildFile(proto)) << proto.name();
    }
    return pool.FindFileByName("scenario.proto");
}

template <class Element>
std::string CommentOf(const Element& element) {
    SourceLocation location;
    element.GetSourceLocation(&location);
    return QString::fromStdString(location.leading_comments).simplified().toStdString();
}

std::string TypeOf(const FieldDescriptor& field) {
    const devserver::Rule& rule = field.options().GetExtension(devserver::rule);
    std::string type = field.message_type() ? field.message_type()->name() : field.type_name();
    if (field.message_type() && field.message_type()->file() != field.file()) {
        type = "JSON";
    }
    if (rule.hex()) {
        type = "hex digits";
    }
    type += field.is_repeated() ? "[]" : "";
    type += rule.notempty() ? ", not empty" : "";
    if (rule.has_min() || rule.has_max()) {
        type += fmt::format(FMT_STRING(", {}..{}"), rule.has_min() ? std::to_string(rule.min()) : "0",
                            rule.has_max() ? std::to_string(rule.max()) : "");
    }
    return type;
}

// Types and rules are those of the server, comments those of the file.
std::string TableOf(const Descriptor& message, const Descriptor& documented) {
    const std::string comment = CommentOf(documented);
    std::string table = fmt::format(FMT_STRING("**{}**\n\n{}{}|Key|Type|Meaning|\n|---|---|---|\n"), message.name(),
                                    comment, comment.empty() ? "" : "\n\n");
    for (int i = 0; i < message.field_count(); ++i) {
        const FieldDescriptor& field = *message.field(i);
        table += fmt::format(FMT_STRING("|`{}`{}|{}|{}|\n"), field.json_name(),
                             field.options().GetExtension(devserver::rule).needed() ? "*" : "", TypeOf(field),
                             CommentOf(*documented.field(i)));
    }
    return table + "\n";
}

std::string Reference() {
    google::protobuf::DescriptorPool pool;
    const auto* documented = Documented(pool);
    const auto& schema = *devserver::Scenario::descriptor()->file();
    std::string reference;
    for (int i = 0; documented && i < schema.message_type_count(); ++i) {
        if (schema.message_type(i) != devserver::Rule::descriptor()) {
            reference += TableOf(*schema.message_type(i), *documented->message_type(i));
        }
    }
    return reference;
}

TEST(SchemaReferenceTest, PageHasTheTablesOfTheSchema) {
    QFile file(QStringLiteral(ZR_SOURCE_DIR "/docs/devserver.md"));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    std::string page = file.readAll().toStdString();
    const size_t begin = page.find(kBegin) + std::string(kBegin).size();
    const size_t size = page.find(kEnd) - begin;

    if (qEnvironmentVariableIsSet("ZR_UPDATE_DOCS")) {
        page.replace(begin, size, Reference());
        file.resize(0);
        file.seek(0);
        file.write(QByteArray::fromStdString(page));
        return;
    }

    EXPECT_EQ(page.substr(begin, size), Reference())
        << "Write it: ZR_UPDATE_DOCS=1 test_devserver --gtest_filter='SchemaReference*'";
}

}  // namespace
