#include "AdAnswer.h"

#include <algorithm>
#include <limits>

namespace devserver {
namespace {

std::vector<std::string> ReadTexts(const CJsonNode& list) {
    std::vector<std::string> texts;
    for (const CJsonNode& item : list.Items()) {
        texts.push_back(item.NonEmptyText());
    }
    return texts;
}

template <class T>
bool IsFor(const std::optional<std::vector<T>>& condition, const std::optional<T>& value) {
    return !condition || (value && std::find(condition->begin(), condition->end(), *value) != condition->end());
}

bool IsDue(const Campaign& campaign, const Audience& audience, int64_t now) {
    return campaign.start.At(now) <= now && now <= campaign.end.At(now) && now <= campaign.expire.At(now) &&
           IsFor(campaign.languages, audience.language) && IsFor(campaign.users, audience.user);
}

Json::Value Ad(const AdSlot& slot, const Campaign& campaign, const AdSurroundings& surroundings) {
    Json::Value json;
    json["ad_id"] = campaign.id;
    WriteMember(json, "name", campaign.name);
    WriteMember(json, "push_id", campaign.pushId);
    json["start_time"] = Json::Int64(campaign.start.At(surroundings.nowSeconds));
    json["end_time"] = Json::Int64(campaign.end.At(surroundings.nowSeconds));
    json["expire_time"] = Json::Int64(campaign.expire.At(surroundings.nowSeconds));
    Json::Value material;
    const bool isUrl = campaign.image.find("://") != std::string::npos;
    material["img"] = isUrl ? campaign.image : surroundings.pictureFolder + campaign.image;
    material["schema"] = campaign.schema;
    if (slot.adType == kAdTypePopup) {
        Json::Value& popup = json["popup_ad"];
        popup["popup_type"] = campaign.popupType;
        popup["show_areas"] = Json::Value(Json::arrayValue);
        for (const int32_t area : campaign.showAreas) {
            popup["show_areas"].append(area);
        }
        popup["bottom_popup"] = material;
    } else {
        json["banner_ad"] = material;
    }
    return json;
}

Json::Value Data(const AdSlot& slot) {
    Json::Value json;
    json["ad_type"] = slot.adType;
    json["ad_position"] = slot.adPosition;
    WriteMember(json, "show_duration", slot.showDuration);
    if (slot.showInterval) {
        json["show_interval"] = Json::Int64(*slot.showInterval);
    }
    WriteMember(json, "show_interval_type", slot.showIntervalType);
    json["enable_close"] = slot.enableClose;
    if (slot.bannerPosition) {
        Json::Value& position = json["banner_position"];
        position["banner_type"] = slot.bannerPosition->bannerType;
        WriteMember(position, "carousel_interval", slot.bannerPosition->carouselInterval);
        position["material_scale"] = slot.bannerPosition->materialScale;
        position["material_corner"] = slot.bannerPosition->materialCorner;
    }
    json["ad"] = Json::Value(Json::arrayValue);
    return json;
}

// A place without campaigns, for one that the scenario does not have.
AdSlot EmptySlot(const AdQuery& query) {
    AdSlot slot;
    slot.adType = query.adType;
    slot.adPosition = query.adPosition;
    slot.showDuration = 0;
    slot.showInterval = 0;
    slot.showIntervalType = 0;
    return slot;
}

AdSlot FindSlot(const AdQuery& query, const CScenario& scenario) {
    const auto& slots = scenario.Ads();
    const auto found = std::find_if(slots.begin(), slots.end(), [&query](const AdSlot& slot) {
        return slot.adType == query.adType && slot.adPosition == query.adPosition;
    });
    return found == slots.end() ? EmptySlot(query) : *found;
}

Json::Value Answer(const AdSlot& slot, const std::vector<Campaign>& campaigns, const AdSurroundings& surroundings) {
    Json::Value json;
    json["code"] = 0;
    json["message"] = "";
    json["data"] = Data(slot);
    for (const Campaign& campaign : campaigns) {
        json["data"]["ad"].append(Ad(slot, campaign, surroundings));
    }
    return json;
}

}  // namespace

AdQuery ReadAdQuery(const CJsonNode& root) {
    root.Keys({"ad_type", "ad_position", "request_id"}, {"ad_id"});
    AdQuery query;
    query.adType = root.Member("ad_type").Int32();
    query.adPosition = root.Member("ad_position").Int32();
    root.Member("request_id").NonEmptyText();
    query.adIds = ReadTexts(root.Member("ad_id"));
    return query;
}

Json::Value AnswerAdSearch(const AdQuery& query, const Audience& audience, const AdSurroundings& surroundings) {
    const AdSlot slot = FindSlot(query, surroundings.scenario);
    std::vector<Campaign> due;
    std::copy_if(slot.campaigns.begin(), slot.campaigns.end(), std::back_inserter(due),
                 [&](const Campaign& campaign) { return IsDue(campaign, audience, surroundings.nowSeconds); });
    return Answer(slot, due, surroundings);
}

Json::Value AnswerAdCheck(const AdQuery& query, const AdSurroundings& surroundings) {
    const AdSlot slot = FindSlot(query, surroundings.scenario);
    std::vector<Campaign> named;
    for (const std::string& id : query.adIds) {
        std::copy_if(slot.campaigns.begin(), slot.campaigns.end(), std::back_inserter(named),
                     [&id](const Campaign& campaign) { return campaign.id == id; });
    }
    return Answer(slot, named, surroundings);
}

std::vector<std::string> ReadExposure(const CJsonNode& root) {
    root.Keys({"ad_type", "ad_position", "expose_id", "expose_duration"}, {"ad_id", "push_id"});
    root.Member("ad_type").Int32();
    root.Member("ad_position").Int32();
    root.Member("expose_id").Text();
    root.Member("expose_duration").Signed(std::numeric_limits<int64_t>::min(), std::numeric_limits<int64_t>::max());
    ReadTexts(root.Member("push_id"));
    return ReadTexts(root.Member("ad_id"));
}

}  // namespace devserver
