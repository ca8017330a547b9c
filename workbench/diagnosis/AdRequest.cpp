#include "workbench/diagnosis/AdRequest.h"

#include <QUrl>
#include <algorithm>

#include "framework/JsonText.h"
#include "workbench/ControlClient.h"

namespace {

Json::Value Parsed(const std::string& body) {
    std::string error;
    return host::ParseJson(body, error).value_or(Json::Value());
}

AdOffer OfferOf(const Json::Value& ad) {
    const Json::Value& popup = json::Member(ad, "popup_ad");
    const Json::Value& card = popup.isObject() ? json::Member(popup, "bottom_popup") : json::Member(ad, "banner_ad");
    AdOffer offer;
    offer.id = json::Text(json::Member(ad, "ad_id"));
    offer.image = json::Text(json::Member(card, "img"));
    offer.startS = json::Number(json::Member(ad, "start_time"));
    offer.endS = json::Number(json::Member(ad, "end_time"));
    offer.expireS = json::Number(json::Member(ad, "expire_time"));
    for (const Json::Value& area : json::Items(json::Member(popup, "show_areas"))) {
        offer.areas.push_back(int(json::Number(area).value_or(0)));
    }
    return offer;
}

}  // namespace

bool AdOffer::LastsUntil(qint64 second) const {
    return second <= endS.value_or(second) && second <= expireS.value_or(second);
}

// Two ads can have the same id; the time window identifies the ad.
const log_table::ParsedLine* AdRequest::DropOf(const AdOffer& ad) const {
    const auto drop = std::find_if(drops.begin(), drops.end(), [&ad](const log_table::ParsedLine& line) {
        const auto is = [&line](std::optional<qint64> limit) { return limit == std::make_optional(line.Number(1)); };
        return line.values.value(4) == ad.id && (is(ad.startS) || is(ad.endS) || is(ad.expireS));
    });
    return drop == drops.end() ? nullptr : &*drop;
}

std::vector<const AdOffer*> AdRequest::Kept() const {
    std::vector<const AdOffer*> kept;
    for (const AdOffer& ad : ads) {
        if (refusal.isEmpty() && !DropOf(ad)) {
            kept.push_back(&ad);
        }
    }
    return kept;
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
    const auto type = json::Number(json::Member(json, "ad_type"));
    const auto position = json::Number(json::Member(json, "ad_position"));
    request.id = json::Text(json::Member(json, "request_id"));
    if (request.id.isEmpty() || !type || !position) {
        return std::nullopt;
    }
    request.slot = {int(*type), int(*position)};
    for (const Json::Value& id : json::Items(json::Member(json, "ad_id"))) {
        request.askedFor << json::Text(id);
    }
    return request;
}

void ReadAdAnswer(const std::string& body, AdRequest& request) {
    const Json::Value json = Parsed(body);
    request.code = json::Number(json::Member(json, "code"));
    request.ads.clear();
    for (const Json::Value& ad : json::Items(json::Member(json::Member(json, "data"), "ad"))) {
        request.ads.push_back(OfferOf(ad));
    }
}
