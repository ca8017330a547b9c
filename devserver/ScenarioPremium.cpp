#include "ScenarioPremium.h"

namespace devserver {
namespace {

struct TextKey {
    const char* key;
    std::optional<std::string> RightTexts::*text;
};

constexpr TextKey kTextKeys[] = {
    {"mainTitle", &RightTexts::mainTitle},     {"mainBtn", &RightTexts::mainBtn},
    {"detailTitle", &RightTexts::detailTitle}, {"detailSubTitle", &RightTexts::detailSubTitle},
    {"detailBtn", &RightTexts::detailBtn},     {"detailSubBtn", &RightTexts::detailSubBtn},
};

RightTexts ReadTexts(const CJsonNode& node) {
    node.Keys({}, {"mainTitle", "mainBtn", "detailTitle", "detailSubTitle", "detailBtn", "detailSubBtn"});
    RightTexts texts;
    for (const TextKey& key : kTextKeys) {
        texts.*key.text = node.Member(key.key).Maybe(&CJsonNode::Text);
    }
    return texts;
}

Json::Value Write(const RightTexts& texts) {
    Json::Value json(Json::objectValue);
    for (const TextKey& key : kTextKeys) {
        WriteMember(json, key.key, texts.*key.text);
    }
    return json;
}

RightLinks ReadLinks(const CJsonNode& node) {
    node.Keys({}, {"mainBtn", "detailBtn", "detailSubBtn"});
    RightLinks links;
    links.mainBtn = node.Member("mainBtn").Maybe(&CJsonNode::Int32);
    links.detailBtn = node.Member("detailBtn").Maybe(&CJsonNode::Int32);
    links.detailSubBtn = node.Member("detailSubBtn").Maybe(&CJsonNode::Int32);
    return links;
}

Json::Value Write(const RightLinks& links) {
    Json::Value json(Json::objectValue);
    WriteMember(json, "mainBtn", links.mainBtn);
    WriteMember(json, "detailBtn", links.detailBtn);
    WriteMember(json, "detailSubBtn", links.detailSubBtn);
    return json;
}

RightDisplay ReadDisplay(const CJsonNode& node) {
    node.Keys({"access"}, {"uiType", "otherInfo", "links", "texts"});
    RightDisplay display;
    display.uiType = node.Member("uiType").Maybe(&CJsonNode::Text);
    display.otherInfo = node.Member("otherInfo").Maybe(&CJsonNode::Any);
    if (const CJsonNode links = node.Member("links"); links.Present()) {
        display.links = ReadLinks(links);
    }
    if (const CJsonNode texts = node.Member("texts"); texts.Present()) {
        display.texts = ReadByLanguage<RightTexts>(texts, true, ReadTexts);
    }
    return display;
}

Json::Value Write(int32_t access, const RightDisplay& display) {
    Json::Value json;
    json["access"] = access;
    WriteMember(json, "uiType", display.uiType);
    WriteMember(json, "otherInfo", display.otherInfo);
    if (display.links) {
        json["links"] = Write(*display.links);
    }
    if (display.texts) {
        json["texts"] = WriteByLanguage(*display.texts, [](const RightTexts& texts) { return Write(texts); });
    }
    return json;
}

UserRight ReadUserRight(const CJsonNode& node) {
    node.Keys({"access"}, {"hasPermission", "activationType", "daysLeft", "activationSource", "display", "state"});
    UserRight right;
    right.access = node.Member("access").Int32();
    right.hasPermission = node.Member("hasPermission").Maybe(&CJsonNode::Bool);
    right.activationType = node.Member("activationType").Maybe(&CJsonNode::Int32);
    right.daysLeft = node.Member("daysLeft").Maybe(&CJsonNode::Int32);
    right.activationSource = node.Member("activationSource").Maybe(&CJsonNode::Int32);
    right.display = node.Member("display").Maybe(&CJsonNode::Bool).value_or(true);
    right.state = node.Member("state").Maybe(&CJsonNode::Bool).value_or(true);
    return right;
}

Json::Value Write(const UserRight& right) {
    Json::Value json;
    json["access"] = right.access;
    WriteMember(json, "hasPermission", right.hasPermission);
    WriteMember(json, "activationType", right.activationType);
    WriteMember(json, "daysLeft", right.daysLeft);
    WriteMember(json, "activationSource", right.activationSource);
    if (!right.display) {
        json["display"] = false;
    }
    if (!right.state) {
        json["state"] = false;
    }
    return json;
}

}  // namespace

const RightTexts* RightDisplay::TextsIn(Language language) const {
    if (!texts) {
        return nullptr;
    }
    const auto found = texts->find(language);
    return found == texts->end() ? &texts->at(Language::English) : &found->second;
}

RightCatalogue ReadRightCatalogue(const CJsonNode& node) {
    RightCatalogue catalogue;
    for (const CJsonNode& item : node.Items()) {
        const CJsonNode access = item.Member("access");
        const int32_t number = access.Int32();
        const bool isNew = catalogue.emplace(number, ReadDisplay(item)).second;
        // What is no number is refused as such, and reads as 0 each time.
        if (!isNew && access.Any() == Json::Value(number)) {
            access.Refuse("another right has this number");
        }
    }
    return catalogue;
}

Json::Value WriteRightCatalogue(const RightCatalogue& catalogue) {
    Json::Value json(Json::arrayValue);
    for (const auto& [access, display] : catalogue) {
        json.append(Write(access, display));
    }
    return json;
}

Premium ReadPremium(const CJsonNode& node) {
    node.Keys({}, {"code", "message", "data", "rights"});
    Premium premium;
    premium.head = ReadAnswerHead(node);
    premium.data = node.Member("data").Maybe(&CJsonNode::Bool).value_or(true);
    for (const CJsonNode& right : node.Member("rights").Items()) {
        premium.rights.push_back(ReadUserRight(right));
    }
    return premium;
}

Json::Value WritePremium(const Premium& premium) {
    Json::Value json;
    WriteAnswerHead(json, premium.head);
    if (!premium.data) {
        json["data"] = false;
    }
    json["rights"] = Json::Value(Json::arrayValue);
    for (const UserRight& right : premium.rights) {
        json["rights"].append(Write(right));
    }
    return json;
}

}  // namespace devserver
