#include "workbench/WireDecoder.h"

#include <google/protobuf/descriptor.pb.h>
#include <google/protobuf/descriptor_database.h>
#include <google/protobuf/dynamic_message.h>
#include <google/protobuf/unknown_field_set.h>

#include <QFile>

#include "framework/HostLog.h"

// The macro declares a function of the global namespace.
static void LoadResources() {
    Q_INIT_RESOURCE(schemas);
}

namespace {

using google::protobuf::Descriptor;
using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using google::protobuf::Reflection;
using google::protobuf::UnknownField;

constexpr host::CHostLog kLog("Workbench");

std::vector<FieldNode> FieldsOf(const Message& message);

/// `index` is the element's index in a repeated field; -1 for other fields.
FieldNode ValueNode(const Message& message, const FieldDescriptor& field, int index) {
    const Reflection& read = *message.GetReflection();
    const bool many = index >= 0;
    const QString name = QString::fromStdString(field.name()) + (many ? QStringLiteral("[%1]").arg(index) : QString());
    const auto number = [&name](auto value) { return FieldNode{name, QString::number(value), {}, {}}; };
    switch (field.cpp_type()) {
        case FieldDescriptor::CPPTYPE_INT32:
            return number(many ? read.GetRepeatedInt32(message, &field, index) : read.GetInt32(message, &field));
        case FieldDescriptor::CPPTYPE_INT64:
            return number(
                qlonglong(many ? read.GetRepeatedInt64(message, &field, index) : read.GetInt64(message, &field)));
        case FieldDescriptor::CPPTYPE_UINT32:
            return number(many ? read.GetRepeatedUInt32(message, &field, index) : read.GetUInt32(message, &field));
        case FieldDescriptor::CPPTYPE_UINT64:
            return number(
                qulonglong(many ? read.GetRepeatedUInt64(message, &field, index) : read.GetUInt64(message, &field)));
        case FieldDescriptor::CPPTYPE_DOUBLE:
            return number(many ? read.GetRepeatedDouble(message, &field, index) : read.GetDouble(message, &field));
        case FieldDescriptor::CPPTYPE_FLOAT:
            return number(
                double(many ? read.GetRepeatedFloat(message, &field, index) : read.GetFloat(message, &field)));
        case FieldDescriptor::CPPTYPE_BOOL: {
            const bool value = many ? read.GetRepeatedBool(message, &field, index) : read.GetBool(message, &field);
            return {name, value ? QStringLiteral("true") : QStringLiteral("false"), {}, {}};
        }
        case FieldDescriptor::CPPTYPE_ENUM: {
            const auto* value = many ? read.GetRepeatedEnum(message, &field, index) : read.GetEnum(message, &field);
            return {name,
                    QStringLiteral("%1 (%2)").arg(QString::fromStdString(value->name())).arg(value->number()),
                    {},
                    {}};
        }
        case FieldDescriptor::CPPTYPE_STRING:
            return BytesField(name,
                              many ? read.GetRepeatedString(message, &field, index) : read.GetString(message, &field));
        case FieldDescriptor::CPPTYPE_MESSAGE:
            return {
                name,
                QString(),
                {},
                FieldsOf(many ? read.GetRepeatedMessage(message, &field, index) : read.GetMessage(message, &field))};
    }
    return {name, QString(), {}, {}};
}

FieldNode UnknownNode(const UnknownField& field) {
    const QString name = QStringLiteral("#%1").arg(field.number());
    switch (field.type()) {
        case UnknownField::TYPE_VARINT:
            return {name, QString::number(qulonglong(field.varint())), {}, {}};
        case UnknownField::TYPE_FIXED32:
            return {name, QString::number(field.fixed32()), {}, {}};
        case UnknownField::TYPE_FIXED64:
            return {name, QString::number(qulonglong(field.fixed64())), {}, {}};
        case UnknownField::TYPE_LENGTH_DELIMITED:
            return RawField(name, field.length_delimited());
        case UnknownField::TYPE_GROUP:
            break;
    }
    FieldNode group{name, QString(), {}, {}};
    for (int i = 0; i < field.group().field_count(); ++i) {
        group.children.push_back(UnknownNode(field.group().field(i)));
    }
    return group;
}

std::vector<FieldNode> FieldsOf(const Message& message) {
    const Reflection& read = *message.GetReflection();
    std::vector<const FieldDescriptor*> set;
    read.ListFields(message, &set);
    std::vector<FieldNode> nodes;
    for (const FieldDescriptor* field : set) {
        if (!field->is_repeated()) {
            nodes.push_back(ValueNode(message, *field, -1));
            continue;
        }
        for (int index = 0; index < read.FieldSize(message, field); ++index) {
            nodes.push_back(ValueNode(message, *field, index));
        }
    }
    const auto& unknown = read.GetUnknownFields(message);
    for (int i = 0; i < unknown.field_count(); ++i) {
        nodes.push_back(UnknownNode(unknown.field(i)));
    }
    return nodes;
}

}  // namespace

struct CWireDecoder::Schemas {
    google::protobuf::SimpleDescriptorDatabase database;
    google::protobuf::DescriptorPool pool{&database};
    google::protobuf::DynamicMessageFactory factory{&pool};
};

CWireDecoder::CWireDecoder() : m_schemas(std::make_unique<Schemas>()) {
    LoadResources();
    QFile file(QStringLiteral(":/schemas/schemas.desc"));
    google::protobuf::FileDescriptorSet set;
    if (!file.open(QIODevice::ReadOnly) || !set.ParseFromString(file.readAll().toStdString())) {
        kLog.Error(FMT_STRING("The schemas can't be read: messages are shown as bytes"));
        return;
    }
    for (const auto& schema : set.file()) {
        m_schemas->database.Add(schema);
    }
}

CWireDecoder::~CWireDecoder() = default;

bool CWireDecoder::Knows(const std::string& type) const {
    return m_schemas->pool.FindMessageTypeByName(type) != nullptr;
}

QString CWireDecoder::EnumName(const std::string& type, int number) const {
    const auto* names = m_schemas->pool.FindEnumTypeByName(type);
    const auto* value = names ? names->FindValueByNumber(number) : nullptr;
    return value ? QString::fromStdString(value->name()) : QString();
}

std::vector<FieldNode> CWireDecoder::Decode(const std::string& type, const std::string& bytes) const {
    const Descriptor* descriptor = m_schemas->pool.FindMessageTypeByName(type);
    if (!descriptor) {
        return bytes.empty() ? std::vector<FieldNode>{}
                             : std::vector<FieldNode>{RawField(QStringLiteral("Bytes without a schema"), bytes)};
    }
    const std::unique_ptr<Message> message(m_schemas->factory.GetPrototype(descriptor)->New());
    // Messages without a required field are shown too.
    if (!message->ParsePartialFromString(bytes)) {
        return {RawField(QStringLiteral("Bytes that are no such message"), bytes)};
    }
    return FieldsOf(*message);
}
