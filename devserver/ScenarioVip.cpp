#include "ScenarioVip.h"

namespace devserver {
namespace {

VipBasic ReadBasic(const CJsonNode& node) {
    node.Keys({}, {"state", "level", "version", "newState", "newSubState", "autoRenewal"});
    VipBasic basic;
    basic.state = node.Member("state").Maybe(&CJsonNode::Int32);
    basic.level = node.Member("level").Maybe(&CJsonNode::UInt32);
    basic.version = node.Member("version").Maybe(&CJsonNode::UInt32);
    basic.newState = node.Member("newState").Maybe(&CJsonNode::UInt32);
    basic.newSubState = node.Member("newSubState").Maybe(&CJsonNode::UInt32);
    basic.autoRenewal = node.Member("autoRenewal").Maybe(&CJsonNode::Int32);
    return basic;
}

Json::Value Write(const VipBasic& basic) {
    Json::Value json(Json::objectValue);
    WriteMember(json, "state", basic.state);
    WriteMember(json, "level", basic.level);
    WriteMember(json, "version", basic.version);
    WriteMember(json, "newState", basic.newState);
    WriteMember(json, "newSubState", basic.newSubState);
    WriteMember(json, "autoRenewal", basic.autoRenewal);
    return json;
}

std::optional<ByLanguage<std::string>> ReadTitle(const CJsonNode& node) {
    if (!node.Present()) {
        return std::nullopt;
    }
    return ReadByLanguage<std::string>(node, false, [](const CJsonNode& text) { return text.Text(); });
}

void WriteTitle(Json::Value& json, const char* key, const std::optional<ByLanguage<std::string>>& title) {
    if (title) {
        json[key] = WriteByLanguage(*title, [](const std::string& text) { return Json::Value(text); });
    }
}

VipEntry ReadEntry(const CJsonNode& node) {
    node.Keys({}, {"mainTitle", "btnTitle"});
    return {ReadTitle(node.Member("mainTitle")), ReadTitle(node.Member("btnTitle"))};
}

Json::Value Write(const VipEntry& entry) {
    Json::Value json(Json::objectValue);
    WriteTitle(json, "mainTitle", entry.mainTitle);
    WriteTitle(json, "btnTitle", entry.btnTitle);
    return json;
}

}  // namespace

Vip ReadVip(const CJsonNode& node) {
    node.Keys({}, {"code", "message", "qualification", "basic", "entry"});
    Vip vip;
    vip.head = ReadAnswerHead(node);
    vip.qualification = node.Member("qualification").Maybe(&CJsonNode::Bool);
    if (const CJsonNode basic = node.Member("basic"); basic.Present()) {
        vip.basic = ReadBasic(basic);
    }
    if (const CJsonNode entry = node.Member("entry"); entry.Present()) {
        vip.entry = ReadEntry(entry);
    }
    return vip;
}

Json::Value WriteVip(const Vip& vip) {
    Json::Value json(Json::objectValue);
    WriteAnswerHead(json, vip.head);
    WriteMember(json, "qualification", vip.qualification);
    if (vip.basic) {
        json["basic"] = Write(*vip.basic);
    }
    if (vip.entry) {
        json["entry"] = Write(*vip.entry);
    }
    return json;
}

}  // namespace devserver
