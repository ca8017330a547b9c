#include "Ad/Model/ZRAdModel.h"

#include "Ad/Model/ZRAdBannerModel.h"
#include "Ad/Model/ZRAdPopupModel.h"
#include "GrowthBizLogUtil.h"
#include "GrowthJson.h"

using namespace growth_json;

namespace {

constexpr auto kLogModuleType = CGrowthBizLogUtil::Ad;

/// Returns a decoded ad; null if it is incomplete.
template <class Ad>
CZRAdModel* NewDecoded(const Json::Value& value, QObject* list) {
    auto* ad = new Ad(list);
    return ad->Decode(value) ? ad : nullptr;
}

}  // namespace

CZRAdModel::CZRAdModel(QObject* parent) : QObject(parent) {}

CZRAdModel::~CZRAdModel() = default;

bool CZRAdModel::Decode(Json::Value const& value) {
    if (!IsObject(value)) {
        LogInfo("CZRAdModel decode failed, json is unvalid");
        return false;
    }
    m_adId = Text(Member(value, "ad_id"));
    if (m_adId.isEmpty()) {
        LogInfo("CZRAdModel decode failed, ad_id is unvalid");
        return false;
    }
    m_name = Text(Member(value, "name"));
    const Json::Value& startTime = Member(value, "start_time");
    if (!startTime.isInt64()) {
        LogInfo("CZRAdModel decode failed, start_time is unvalid");
        return false;
    }
    m_startTime = startTime.asInt64();
    const Json::Value& endTime = Member(value, "end_time");
    if (!endTime.isInt64()) {
        LogInfo("CZRAdModel decode failed, end_time is unvalid");
        return false;
    }
    m_endTime = endTime.asInt64();
    const Json::Value& expireTime = Member(value, "expire_time");
    if (!expireTime.isInt64()) {
        LogInfo("CZRAdModel decode failed, expire_time is unvalid");
        return false;
    }
    m_expireTime = expireTime.asInt64();
    m_pushId = Text(Member(value, "push_id"));
    return true;
}

CZRAdBannerPosition::CZRAdBannerPosition(QObject* parent) : QObject(parent) {}

CZRAdBannerPosition::~CZRAdBannerPosition() = default;

bool CZRAdBannerPosition::Decode(Json::Value const& value) {
    if (!IsObject(value)) {
        LogInfo("CZRAdBannerPosition decode failed, json is unvalid");
        return false;
    }
    const Json::Value& bannerType = Member(value, "banner_type");
    if (!bannerType.isInt()) {
        LogInfo("CZRAdBannerPosition decode failed, banner_type is unvalid");
        return false;
    }
    m_bannerType = bannerType.asInt();
    const Json::Value& carouselInterval = Member(value, "carousel_interval");
    if (carouselInterval.isInt()) {
        m_carouselInterval = carouselInterval.asInt();
    }
    m_materialScale = Text(Member(value, "material_scale"));
    if (m_materialScale.isEmpty()) {
        LogInfo("CZRAdBannerPosition decode failed, material_scale is unvalid");
        return false;
    }
    m_materialCorner = Text(Member(value, "material_corner"));
    if (m_materialCorner.isEmpty()) {
        LogInfo("CZRAdBannerPosition decode failed, material_corner is unvalid");
        return false;
    }
    return true;
}

CZRAdModelList::CZRAdModelList(QObject* parent) : QObject(parent) {}

CZRAdModelList::~CZRAdModelList() = default;

bool CZRAdModelList::Decode(Json::Value const& value) {
    if (!IsObject(value)) {
        LogError("CZRAdModelList decode failed, json is unvalid");
        return false;
    }
    const Json::Value& adType = Member(value, "ad_type");
    if (!adType.isInt()) {
        LogError("CZRAdModelList decode failed, ad_type is unvalid");
        return false;
    }
    m_adType = ZRAdType(adType.asInt());
    const Json::Value& adPosition = Member(value, "ad_position");
    if (!adPosition.isInt()) {
        LogError("CZRAdModelList decode failed, ad_position is unvalid");
        return false;
    }
    m_adPosition = adPosition.asInt();
    // A popup needs its three rules. Other kinds skip a rule of the wrong type.
    const bool isPopup = m_adType == ZRAdTypePopup;
    const Json::Value& showDuration = Member(value, "show_duration");
    if (showDuration.isInt()) {
        m_showDuration = showDuration.asInt();
    } else if (isPopup) {
        LogError("CZRAdModelList decode failed, show_duration is unvalid");
        return false;
    }
    const Json::Value& showInterval = Member(value, "show_interval");
    if (showInterval.isInt64()) {
        m_showInterval = showInterval.asInt64();
    } else if (isPopup) {
        LogError("CZRAdModelList decode failed, show_interval is unvalid");
        return false;
    }
    const Json::Value& showIntervalType = Member(value, "show_interval_type");
    if (showIntervalType.isInt()) {
        m_showIntervalType = showIntervalType.asInt();
    } else if (isPopup) {
        LogError("CZRAdModelList decode failed, show_interval_type is unvalid");
        return false;
    }
    const Json::Value& enableClose = Member(value, "enable_close");
    if (!enableClose.isBool()) {
        LogError("CZRAdModelList decode failed, enable_close is unvalid");
        return false;
    }
    m_enableClose = enableClose.asBool();
    const Json::Value& bannerPosition = Member(value, "banner_position");
    if (IsObject(bannerPosition)) {
        auto* position = new CZRAdBannerPosition(this);
        if (!position->Decode(bannerPosition)) {
            return false;
        }
        m_bannerPosition = position;
    }
    const Json::Value& ads = Member(value, "ad");
    return !ads.isArray() || DecodeAds(ads);
}

bool CZRAdModelList::DecodeAds(Json::Value const& ads) {
    m_adList = std::make_unique<QList<CZRAdModel*>>();
    for (const Json::Value& item : ads) {
        if (!IsObject(item)) {
            LogError("CZRAdModelList decode failed, item of ad is unvalid");
            return false;
        }
        CZRAdModel* ad = nullptr;
        if (m_adType == ZRAdTypePopup) {
            ad = NewDecoded<CZRAdPopupModel>(item, this);
        } else if (m_adType == ZRAdTypeBanner) {
            ad = NewDecoded<CZRAdBannerModel>(item, this);
        } else {
            continue;  // an ad of a kind that this client does not show
        }
        if (!ad) {
            return false;
        }
        m_adList->append(ad);
    }
    return true;
}

CZRAdResponseModel::CZRAdResponseModel(QObject* parent) : QObject(parent) {}

CZRAdResponseModel::~CZRAdResponseModel() = default;

bool CZRAdResponseModel::Decode(Json::Value const& value) {
    if (!IsObject(value)) {
        LogError("CZRAdResponseModel decode failed, json is unvalid");
        return false;
    }
    const Json::Value& code = Member(value, "code");
    if (!code.isInt()) {
        LogError("CZRAdResponseModel decode failed, code is unvalid");
        return false;
    }
    m_code = code.asInt();
    m_message = Text(Member(value, "message"));
    const Json::Value& data = Member(value, "data");
    if (!IsObject(data)) {
        LogError("CZRAdResponseModel decode failed, data is unvalid");
        return false;
    }
    m_data = new CZRAdModelList(nullptr);
    if (!m_data->Decode(data)) {
        // No receiver takes ownership, so the answer owns it.
        m_data->setParent(this);
        return false;
    }
    return true;
}
