#include "Ad/Model/ZRAdBannerModel.h"

#include "GrowthBizLogUtil.h"
#include "GrowthJson.h"

using namespace growth_json;

namespace {

constexpr auto kLogModuleType = CGrowthBizLogUtil::Ad;

}  // namespace

CZRAdBannerModel::CZRAdBannerModel(QObject* parent) : CZRAdModel(parent) {}

CZRAdBannerModel::~CZRAdBannerModel() = default;

bool CZRAdBannerModel::Decode(Json::Value const& value) {
    if (!IsObject(value)) {
        LogError("CZRAdBannerModel decode failed, json is unvalid");
        return false;
    }
    if (!CZRAdModel::Decode(value)) {
        return false;
    }
    const Json::Value& banner = Member(value, "banner_ad");
    if (!IsObject(banner)) {
        LogError("CZRAdBannerModel decode failed, banner_ad is unvalid");
        return false;
    }
    m_image = Text(Member(banner, "img"));
    if (m_image.isEmpty()) {
        LogError("CZRAdBannerModel decode failed, img is unvalid");
        return false;
    }
    m_schema = Text(Member(banner, "schema"));
    if (m_schema.isEmpty()) {
        LogError("CZRAdBannerModel decode failed, schema is unvalid");
        return false;
    }
    return true;
}
