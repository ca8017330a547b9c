#include "workbench/diagnosis/AdRequest.h"

#include <QUrl>
#include <algorithm>

#include "framework/JsonText.h"

namespace {

Json::Value Parsed(const std::string& body) {
    std::string error;
    return host::ParseJson(body, error).value_or(Json::Value());
}

const Json::Value& Member(const Json::Value& json, const std::string& name) {
    const Json::Value* member = json.isObject() ? json.find(name.data(), name.data() + name.size()) : nullptr;
    return member ? *member : Json::Value::nullSingleton();
}

QString TextOf(const Json::Value& json) {
    return json.isString() ? QString::fromStdString(json.asString()) : QString();
}

std::optional<qint64> NumberOf(const Json::Value& json) {
    return json.isInt64() ? std::make_optional<qint64>(json.asInt64()) : std::nullopt;
}

AdOffer OfferOf(const Json::Value& ad) {
    const Json::Value& popup = Member(ad, "popup_ad");
    AdOffer offer;
    offer.id = TextOf(Member(ad, "ad_id"));
    offer.image =
        TextOf(Member(Member(popup.isObject() ? popup : ad, popup.isObject() ? "bottom_popup" : "banner_ad"), "img"));
    offer.startS = NumberOf(Member(ad, "start_time"));
    offer.endS = NumberOf(Member(ad, "end_time"));
    offer.expireS = NumberOf(Member(ad, "expire_time"));
    const Json::Value& areas = Member(popup, "show_areas");
    for (Json::ArrayIndex index = 0; areas.isArray() && index < areas.size(); ++index) {
        if (areas[index].isInt()) {
            offer.areas.push_back(areas[index].asInt());
        }
    }
    return offer;
}

}  // namespace

bool AdOffer::LastsUntil(qint64 second) const {
    return second <= endS.value_or(second) && second <= expireS.value_or(second);
}

// Two ads can have the same id; the time window identifies the ad.
QString AdRequest::DropOf(const AdOffer& ad) const {
    if (!refusal.isEmpty()) {
        return refusal;
    }
    const auto drop = std::find_if(drops.begin(), drops.end(), [&ad](const Drop& one) {
        const auto is = [&one](std::optional<qint64> limit) { return limit == std::make_optional(one.limitS); };
        return one.id == ad.id && (is(ad.startS) || is(ad.endS) || is(ad.expireS));
    });
    return drop == drops.end() ? QString() : drop->why;
}

int AdRequest::KeptCount() const {
    return int(std::count_if(ads.begin(), ads.end(), [this](const AdOffer& ad) { return DropOf(ad).isEmpty(); }));
}

const AdOffer* AdRequest::FirstKept() const {
    const auto first = std::find_if(ads.begin(), ads.end(), [this](const AdOffer& ad) { return DropOf(ad).isEmpty(); });
    return first == ads.end() ? nullptr : &*first;
}

const AdOffer* AdRequest::Find(const QString& ad) const {
    const auto found = std::find_if(ads.begin(), ads.end(), [&ad](const AdOffer& one) { return one.id == ad; });
    return found == ads.end() ? nullptr : &*found;
}

std::optional<AdRequest> ReadAdRequest(const std::string& url, const std::string& body) {
    AdRequest request;
    request.path = QUrl(QString::fromStdString(url)).path();
    if (!request.path.endsWith(QLatin1String("/ad/search")) && !request.path.endsWith(QLatin1String("/ad/check"))) {
        return std::nullopt;
    }
    const Json::Value json = Parsed(body);
    request.id = TextOf(Member(json, "request_id"));
    const Json::Value& type = Member(json, "ad_type");
    const Json::Value& position = Member(json, "ad_position");
    if (request.id.isEmpty() || !type.isInt() || !position.isInt()) {
        return std::nullopt;
    }
    request.slot = {type.asInt(), position.asInt()};
    const Json::Value& ids = Member(json, "ad_id");
    for (Json::ArrayIndex index = 0; ids.isArray() && index < ids.size(); ++index) {
        request.askedFor << TextOf(ids[index]);
    }
    return request;
}

void ReadAdAnswer(const std::string& body, AdRequest& request) {
    const Json::Value json = Parsed(body);
    request.code = NumberOf(Member(json, "code"));
    request.ads.clear();
    const Json::Value& ads = Member(Member(json, "data"), "ad");
    for (Json::ArrayIndex index = 0; ads.isArray() && index < ads.size(); ++index) {
        request.ads.push_back(OfferOf(ads[index]));
    }
}
