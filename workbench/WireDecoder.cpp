#include "workbench/WireDecoder.h"

#include <google/protobuf/descriptor.pb.h>
#include <google/protobuf/descriptor_database.h>
#include <google/protobuf/dynamic_message.h>
#include <google/protobuf/text_format.h>
#include <google/protobuf/unknown_field_set.h>

#include <QFile>
#include <algorithm>

#include "EntryScenes.h"
#include "PremiumNumbers.h"
#include "core/message_ids.h"
#include "framework/HostLog.h"
#include "modules/ZRGrowthMessages.h"
#include "workbench/diagnosis/Literal.h"

// The macro declares a function of the global namespace.
static void LoadResources() {
    Q_INIT_RESOURCE(schemas);
}

namespace {

using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using google::protobuf::Reflection;
using google::protobuf::UnknownField;
using google::protobuf::UnknownFieldSet;

constexpr host::CHostLog kLog("Workbench");

std::vector<FieldNode> FieldsOf(const Message& message);

/// `index` is the element's index in a repeated field; -1 for other fields.
FieldNode ValueNode(const Message& message, const FieldDescriptor& field, int index) {
    const Reflection& read = *message.GetReflection();
    const bool many = index >= 0;
    FieldNode node{QString::fromStdString(field.name()) + (many ? "[%1]"_q.arg(index) : QString())};
    if (field.cpp_type() == FieldDescriptor::CPPTYPE_MESSAGE) {
        node.children =
            FieldsOf(many ? read.GetRepeatedMessage(message, &field, index) : read.GetMessage(message, &field));
        return node;
    }
    if (field.cpp_type() == FieldDescriptor::CPPTYPE_STRING) {
        return BytesField(node.name,
                          many ? read.GetRepeatedString(message, &field, index) : read.GetString(message, &field));
    }
    std::string text;
    google::protobuf::TextFormat::PrintFieldValueToString(message, &field, index, &text);
    const auto* value = field.enum_type() ? field.enum_type()->FindValueByName(text) : nullptr;
    node.value = QString::fromStdString(text) + (value ? " (%1)"_q.arg(value->number()) : QString());
    return node;
}

std::vector<FieldNode> UnknownNodes(const UnknownFieldSet& fields) {
    std::vector<FieldNode> nodes;
    for (int i = 0; i < fields.field_count(); ++i) {
        const UnknownField& field = fields.field(i);
        FieldNode node{"#%1"_q.arg(field.number())};
        if (field.type() == UnknownField::TYPE_LENGTH_DELIMITED) {
            node = RawField(node.name, field.length_delimited());
        } else if (field.type() == UnknownField::TYPE_GROUP) {
            node.children = UnknownNodes(field.group());
        } else {
            node.value = QString::number(field.type() == UnknownField::TYPE_VARINT    ? qulonglong(field.varint())
                                         : field.type() == UnknownField::TYPE_FIXED32 ? field.fixed32()
                                                                                      : field.fixed64());
        }
        nodes.push_back(std::move(node));
    }
    return nodes;
}

std::vector<FieldNode> FieldsOf(const Message& message) {
    const Reflection& read = *message.GetReflection();
    std::vector<const FieldDescriptor*> set;
    read.ListFields(message, &set);
    std::vector<FieldNode> nodes;
    for (const FieldDescriptor* field : set) {
        const bool many = field->is_repeated();
        for (int index = 0; index < (many ? read.FieldSize(message, field) : 1); ++index) {
            nodes.push_back(ValueNode(message, *field, many ? index : -1));
        }
    }
    auto unknown = UnknownNodes(read.GetUnknownFields(message));
    std::move(unknown.begin(), unknown.end(), std::back_inserter(nodes));
    return nodes;
}

struct Schemas {
    Schemas() {
        LoadResources();
        QFile file(":/schemas/schemas.desc"_q);
        google::protobuf::FileDescriptorSet set;
        if (!file.open(QIODevice::ReadOnly) || !set.ParseFromString(file.readAll().toStdString())) {
            kLog.Error(FMT_STRING("The schemas can't be read: messages are shown as bytes"));
        }
        for (const auto& schema : set.file()) {
            database.Add(schema);
        }
    }

    google::protobuf::SimpleDescriptorDatabase database;
    google::protobuf::DescriptorPool pool{&database};
    google::protobuf::DynamicMessageFactory factory{&pool};
};

Schemas& AllSchemas() {
    static Schemas schemas;
    return schemas;
}

}  // namespace

namespace wire {

std::vector<FieldNode> Decode(const std::string& type, const std::string& bytes) {
    const auto* descriptor = AllSchemas().pool.FindMessageTypeByName(type);
    if (!descriptor) {
        return bytes.empty() ? std::vector<FieldNode>() : std::vector{RawField("Bytes without a schema"_q, bytes)};
    }
    const std::unique_ptr<Message> message(AllSchemas().factory.GetPrototype(descriptor)->New());
    // Messages without a required field are shown too.
    return message->ParsePartialFromString(bytes) ? FieldsOf(*message)
                                                  : std::vector{RawField("Bytes that are no such message"_q, bytes)};
}

QString EnumName(const std::string& type, int number) {
    const auto* names = AllSchemas().pool.FindEnumTypeByName(type);
    const auto* value = names ? names->FindValueByNumber(number) : nullptr;
    return value ? QString::fromStdString(value->name()) : QString();
}

const std::vector<Command>& Commands() {
    static const std::vector<Command> commands{
        {20982, "GetChatEntry", "chat.GetChatEntryReq", "chat.GetChatEntryRsp", nullptr},
        {kCommandPremiumAccess, "GetUiMsgAndPremiumAccess", "web_premium_access.GetUiMsgAndPremiumAccessReq",
         "web_premium_access.GetUiMsgAndPremiumAccessRsp", nullptr},
        {kCommandVipStatus, "GetAppEntryMessage", "vip_base_service.GetAppEntryMessageReq",
         "vip_base_service.GetAppEntryMessageRsp", nullptr},
        {kPushPremiumChange, "PremiumChangePush", nullptr, nullptr, "web_premium_access.PremiumChangePush"},
        {kPushVipChange, "UserVipStateChangePush", nullptr, nullptr, "vip_base_service.UserVipStateChangePush"},
        {20981, "ActivePermissionState", "web_premium_access.ActivePermissionStateReq",
         "web_premium_access.ActivePermissionStateRsp", nullptr},
        {20145, "AdStatusChangedPush", nullptr, nullptr, "ad_manage_oss.AdPush"},
        {20170, "AdCheckPush", nullptr, nullptr, "ad_manage_oss.AdCheckPush"},
        {20171, "AdPush", nullptr, nullptr, "ads_service.AdPush"},
        {core::kMsgCommonConfigChanged, "CommonConfigChanged"},
        {core::kMsgLoginChannelConnected, "LoginChannelConnected"},
        {core::kMsgLanguageChanged, "LanguageChanged"},
        {core::kMsgThemeChanged, "ThemeChanged"},
        {core::kMsgTabFrameChanged, "TabFrameChanged"},
        {kMsgAIChatEnableChanged, "AIChatEntriesChanged"},
        {kMsgAIChatHiddenButNotClosed, "AIChatHiddenButNotClosed"},
        {kMsgAIChatPageSceneChanged, "AIChatPageSceneChanged"},
        {kMsgPremiumDataChanged, "PremiumDataChanged"},
        {kMsgPremiumRequestAnswered, "PremiumRequestAnswered"},
        {kMsgVipStatusChanged, "VipStatusChanged"},
    };
    return commands;
}

const Command& Find(uint32_t number) {
    static constexpr Command kUnknown{0, ""};
    const auto found = std::find_if(Commands().begin(), Commands().end(),
                                    [number](const Command& command) { return command.number == number; });
    return found == Commands().end() ? kUnknown : *found;
}

}  // namespace wire
