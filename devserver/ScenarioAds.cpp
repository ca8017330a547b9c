#include "ScenarioAds.h"

#include <algorithm>
#include <limits>
#include <set>

namespace devserver {
namespace {

// Enough for every test, and no sum with the clock overflows.
constexpr int64_t kMaxSeconds = 1'000'000'000'000;

AdMoment ReadMoment(const CJsonNode& campaign, const std::string& key) {
    const CJsonNode absolute = campaign.Member(key);
    const CJsonNode relative = campaign.Member(key + "InS");
    if (absolute.Present() == relative.Present()) {
        campaign.Refuse("must hold either " + key + " or " + key + "InS");
    }
    return {relative.Present(), (relative.Present() ? relative : absolute).Signed(-kMaxSeconds, kMaxSeconds)};
}

void WriteMoment(Json::Value& json, const std::string& key, const AdMoment& moment) {
    json[moment.isRelative ? key + "InS" : key] = Json::Int64(moment.seconds);
}

Language ReadLanguage(const CJsonNode& node) {
    const std::string key = node.Text();
    for (const LanguageKey& language : kLanguageKeys) {
        if (key == language.key) {
            return language.language;
        }
    }
    node.Refuse("must be one of en, zh-Hans, zh-Hant, ja, fr");
    return Language::English;
}

const char* KeyOf(Language wanted) {
    const auto found = std::find_if(kLanguageKeys.begin(), kLanguageKeys.end(),
                                    [wanted](const LanguageKey& key) { return key.language == wanted; });
    return found->key;
}

// A condition that nobody meets is a mistake more often than a wish.
template <class T, class Read>
std::optional<std::vector<T>> ReadCondition(const CJsonNode& node, Read read) {
    if (!node.Present()) {
        return std::nullopt;
    }
    std::vector<T> values;
    const std::vector<CJsonNode> items = node.Items();
    std::transform(items.begin(), items.end(), std::back_inserter(values), read);
    if (values.empty()) {
        node.Refuse("must be a list that is not empty");
    }
    return values;
}

// A name goes into a path, where these need no escape.
std::string ReadImage(const CJsonNode& node) {
    const std::string image = node.NonEmptyText();
    const bool isName = std::all_of(image.begin(), image.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_' ||
               c == '.';
    });
    if (!isName && image.find("://") == std::string::npos) {
        node.Refuse("must be a whole URL, or a name of ASCII letters, digits, '-', '_' and '.'");
    }
    return image;
}

Campaign ReadCampaign(const CJsonNode& node, bool isPopup) {
    std::vector<std::string> optional{"name",   "pushId", "start",     "startInS",  "end",
                                      "endInS", "expire", "expireInS", "languages", "users"};
    if (isPopup) {
        optional.insert(optional.end(), {"popupType", "showAreas"});
    }
    node.Keys({"id", "image", "schema"}, optional);
    Campaign campaign;
    campaign.id = node.Member("id").NonEmptyText();
    campaign.name = node.Member("name").Maybe(&CJsonNode::Text);
    campaign.pushId = node.Member("pushId").Maybe(&CJsonNode::Text);
    campaign.start = ReadMoment(node, "start");
    campaign.end = ReadMoment(node, "end");
    campaign.expire = ReadMoment(node, "expire");
    campaign.languages = ReadCondition<Language>(node.Member("languages"), ReadLanguage);
    campaign.users = ReadCondition<uint64_t>(node.Member("users"), [](const CJsonNode& user) {
        return user.Unsigned(1, std::numeric_limits<uint64_t>::max());
    });
    campaign.image = ReadImage(node.Member("image"));
    campaign.schema = node.Member("schema").NonEmptyText();
    if (isPopup) {
        campaign.popupType = node.Member("popupType").Maybe(&CJsonNode::Int32).value_or(campaign.popupType);
        for (const CJsonNode& area : node.Member("showAreas").Items()) {
            campaign.showAreas.push_back(area.Int32());
        }
    }
    return campaign;
}

BannerPosition ReadBannerPosition(const CJsonNode& node) {
    node.Keys({"bannerType", "materialScale", "materialCorner"}, {"carouselInterval"});
    BannerPosition position;
    position.bannerType = node.Member("bannerType").Int32();
    position.carouselInterval = node.Member("carouselInterval").Maybe(&CJsonNode::Int32);
    position.materialScale = node.Member("materialScale").NonEmptyText();
    position.materialCorner = node.Member("materialCorner").NonEmptyText();
    return position;
}

AdSlot ReadSlot(const CJsonNode& node) {
    AdSlot slot;
    slot.adType = node.Member("adType").Int32();
    const bool isPopup = slot.adType == kAdTypePopup;
    std::vector<std::string> required{"adType", "adPosition", "enableClose", "campaigns"};
    std::vector<std::string> optional{"bannerPosition"};
    std::vector<std::string>& showKeys = isPopup ? required : optional;
    showKeys.insert(showKeys.end(), {"showDuration", "showInterval", "showIntervalType"});
    node.Keys(required, optional);
    slot.adPosition = node.Member("adPosition").Int32();
    slot.showDuration = node.Member("showDuration").Maybe(&CJsonNode::Int32);
    if (const CJsonNode interval = node.Member("showInterval"); interval.Present()) {
        slot.showInterval = interval.Signed(std::numeric_limits<int64_t>::min(), std::numeric_limits<int64_t>::max());
    }
    slot.showIntervalType = node.Member("showIntervalType").Maybe(&CJsonNode::Int32);
    slot.enableClose = node.Member("enableClose").Bool();
    if (const CJsonNode position = node.Member("bannerPosition"); position.Present()) {
        slot.bannerPosition = ReadBannerPosition(position);
    }
    std::set<std::string> ids;
    for (const CJsonNode& campaign : node.Member("campaigns").Items()) {
        slot.campaigns.push_back(ReadCampaign(campaign, isPopup));
        const std::string& id = slot.campaigns.back().id;
        if (!id.empty() && !ids.insert(id).second) {
            campaign.Member("id").Refuse("another campaign of the slot has this id");
        }
    }
    return slot;
}

Json::Value Write(const BannerPosition& position) {
    Json::Value json;
    json["bannerType"] = position.bannerType;
    WriteMember(json, "carouselInterval", position.carouselInterval);
    json["materialScale"] = position.materialScale;
    json["materialCorner"] = position.materialCorner;
    return json;
}

Json::Value Write(const Campaign& campaign, bool isPopup) {
    Json::Value json;
    json["id"] = campaign.id;
    WriteMember(json, "name", campaign.name);
    WriteMember(json, "pushId", campaign.pushId);
    WriteMoment(json, "start", campaign.start);
    WriteMoment(json, "end", campaign.end);
    WriteMoment(json, "expire", campaign.expire);
    if (campaign.languages) {
        for (const Language language : *campaign.languages) {
            json["languages"].append(KeyOf(language));
        }
    }
    if (campaign.users) {
        for (const uint64_t user : *campaign.users) {
            json["users"].append(Json::UInt64(user));
        }
    }
    json["image"] = campaign.image;
    json["schema"] = campaign.schema;
    if (isPopup) {
        json["popupType"] = campaign.popupType;
        json["showAreas"] = Json::Value(Json::arrayValue);
        for (const int32_t area : campaign.showAreas) {
            json["showAreas"].append(area);
        }
    }
    return json;
}

Json::Value Write(const AdSlot& slot) {
    Json::Value json;
    json["adType"] = slot.adType;
    json["adPosition"] = slot.adPosition;
    WriteMember(json, "showDuration", slot.showDuration);
    if (slot.showInterval) {
        json["showInterval"] = Json::Int64(*slot.showInterval);
    }
    WriteMember(json, "showIntervalType", slot.showIntervalType);
    json["enableClose"] = slot.enableClose;
    if (slot.bannerPosition) {
        json["bannerPosition"] = Write(*slot.bannerPosition);
    }
    json["campaigns"] = Json::Value(Json::arrayValue);
    for (const Campaign& campaign : slot.campaigns) {
        json["campaigns"].append(Write(campaign, slot.adType == kAdTypePopup));
    }
    return json;
}

}  // namespace

std::vector<AdSlot> ReadAds(const CJsonNode& node) {
    std::vector<AdSlot> slots;
    std::set<std::pair<int32_t, int32_t>> places;
    for (const CJsonNode& item : node.Items()) {
        slots.push_back(ReadSlot(item));
        if (!places.insert({slots.back().adType, slots.back().adPosition}).second) {
            item.Member("adPosition").Refuse("another slot has this type and position");
        }
    }
    return slots;
}

Json::Value WriteAds(const std::vector<AdSlot>& slots) {
    Json::Value json(Json::arrayValue);
    for (const AdSlot& slot : slots) {
        json.append(Write(slot));
    }
    return json;
}

}  // namespace devserver
