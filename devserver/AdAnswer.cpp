#include "AdAnswer.h"

#include <algorithm>

namespace devserver {
namespace {

template <class Values, class T>
bool IsFor(const Values& values, const std::optional<T>& value) {
    return values.empty() || (value && std::find(values.begin(), values.end(), *value) != values.end());
}

struct Window {
    int64_t start;
    int64_t end;
    int64_t expire;
};

Window WindowOf(const Campaign& campaign, int64_t now) {
    return {campaign.has_startins() ? now + campaign.startins() : campaign.start(),
            campaign.has_endins() ? now + campaign.endins() : campaign.end(),
            campaign.has_expireins() ? now + campaign.expireins() : campaign.expire()};
}

bool IsDue(const Campaign& campaign, const Audience& audience, int64_t now) {
    const Window window = WindowOf(campaign, now);
    const auto language = audience.language ? std::make_optional(KeyOf(*audience.language)) : std::nullopt;
    return window.start <= now && now <= window.end && now <= window.expire && IsFor(campaign.languages(), language) &&
           IsFor(campaign.users(), audience.user);
}

Json::Value Ad(const AdSlot& slot, const Campaign& campaign, const AdContext& context) {
    const Window window = WindowOf(campaign, context.nowSeconds);
    Json::Value json;
    json["ad_id"] = campaign.id();
    if (campaign.has_name()) {
        json["name"] = campaign.name();
    }
    if (campaign.has_pushid()) {
        json["push_id"] = campaign.pushid();
    }
    json["start_time"] = Json::Int64(window.start);
    json["end_time"] = Json::Int64(window.end);
    json["expire_time"] = Json::Int64(window.expire);
    Json::Value material;
    const bool isUrl = campaign.image().find("://") != std::string::npos;
    material["img"] = isUrl ? campaign.image() : context.pictureFolder + campaign.image();
    material["schema"] = campaign.schema();
    if (slot.adtype() == kAdTypePopup) {
        Json::Value& popup = json["popup_ad"];
        popup["popup_type"] = campaign.popuptype();
        popup["show_areas"] = Json::arrayValue;
        for (const int32_t area : campaign.showareas()) {
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
    json["ad_type"] = slot.adtype();
    json["ad_position"] = slot.adposition();
    if (slot.has_showduration()) {
        json["show_duration"] = slot.showduration();
    }
    if (slot.has_showinterval()) {
        json["show_interval"] = Json::Int64(slot.showinterval());
    }
    if (slot.has_showintervaltype()) {
        json["show_interval_type"] = slot.showintervaltype();
    }
    json["enable_close"] = slot.enableclose();
    if (slot.has_bannerposition()) {
        Json::Value& position = json["banner_position"];
        position["banner_type"] = slot.bannerposition().bannertype();
        if (slot.bannerposition().has_carouselinterval()) {
            position["carousel_interval"] = slot.bannerposition().carouselinterval();
        }
        position["material_scale"] = slot.bannerposition().materialscale();
        position["material_corner"] = slot.bannerposition().materialcorner();
    }
    json["ad"] = Json::arrayValue;
    return json;
}

// An ad position that the scenario does not have is answered as one without campaigns.
AdSlot EmptySlot(const AdQuery& query) {
    AdSlot slot;
    slot.set_adtype(query.ad_type());
    slot.set_adposition(query.ad_position());
    slot.set_showduration(0);
    slot.set_showinterval(0);
    slot.set_showintervaltype(0);
    return slot;
}

/// Answers with the campaigns that `collect` takes from those of the slot.
template <class Collect>
Json::Value Answer(const AdQuery& query, const AdContext& context, Collect collect) {
    const auto& slots = context.scenario.Ads();
    const auto found = std::find_if(slots.begin(), slots.end(), [&query](const AdSlot& slot) {
        return slot.adtype() == query.ad_type() && slot.adposition() == query.ad_position();
    });
    const AdSlot slot = found == slots.end() ? EmptySlot(query) : *found;
    Json::Value json;
    json["code"] = 0;
    json["message"] = "";
    json["data"] = Data(slot);
    const auto add = [&](const Campaign& campaign) { json["data"]["ad"].append(Ad(slot, campaign, context)); };
    collect(slot.campaigns(), add);
    return json;
}

}  // namespace

Json::Value AnswerAdSearch(const AdQuery& query, const Audience& audience, const AdContext& context) {
    return Answer(query, context, [&](const auto& campaigns, const auto& add) {
        for (const Campaign& campaign : campaigns) {
            if (IsDue(campaign, audience, context.nowSeconds)) {
                add(campaign);
            }
        }
    });
}

Json::Value AnswerAdCheck(const AdQuery& query, const AdContext& context) {
    return Answer(query, context, [&](const auto& campaigns, const auto& add) {
        for (const std::string& id : query.ad_id()) {
            const auto found = std::find_if(campaigns.begin(), campaigns.end(),
                                            [&id](const Campaign& campaign) { return campaign.id() == id; });
            if (found != campaigns.end()) {
                add(*found);
            }
        }
    });
}

}  // namespace devserver
