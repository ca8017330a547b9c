#include "Ad/Model/ZRAdPopupModel.h"

#include "GrowthBizLogUtil.h"
#include "GrowthJson.h"

using namespace growth_json;

namespace {

constexpr auto kLogModuleType = CGrowthBizLogUtil::Ad;

}  // namespace

CZRAdBottomPopupModel::CZRAdBottomPopupModel(QObject* parent) : QObject(parent) {}

CZRAdBottomPopupModel::~CZRAdBottomPopupModel() = default;

bool CZRAdBottomPopupModel::Decode(Json::Value const& value) {
    if (!IsObject(value)) {
        LogError("CZRAdBottomPopupModel decode failed, json is unvalid");
        return false;
    }
    m_image = Text(Member(value, "img"));
    if (m_image.isEmpty()) {
        LogError("CZRAdBottomPopupModel decode failed, img is unvalid");
        return false;
    }
    m_schema = Text(Member(value, "schema"));
    if (m_schema.isEmpty()) {
        LogError("CZRAdBottomPopupModel decode failed, schema is unvalid");
        return false;
    }
    return true;
}

CZRAdPopupModel::CZRAdPopupModel(QObject* parent) : CZRAdModel(parent) {}

CZRAdPopupModel::~CZRAdPopupModel() = default;

bool CZRAdPopupModel::Decode(Json::Value const& value) {
    if (!IsObject(value)) {
        LogError("CZRAdPopupModel decode failed, json is unvalid");
        return false;
    }
    if (!CZRAdModel::Decode(value)) {
        return false;
    }
    const Json::Value& popup = Member(value, "popup_ad");
    if (!IsObject(popup)) {
        LogError("CZRAdPopupModel decode failed, popup_ad is unvalid");
        return false;
    }
    const Json::Value& popupType = Member(popup, "popup_type");
    if (!popupType.isInt()) {
        LogError("CZRAdPopupModel decode failed, popup_type is unvalid");
        return false;
    }
    m_popupType = popupType.asInt();
    const Json::Value& showAreas = Member(popup, "show_areas");
    if (!showAreas.isArray()) {
        LogError("CZRAdPopupModel decode failed, show_areas is unvalid");
        return false;
    }
    m_showAreas = std::make_unique<QList<ZRAdShowAreaType>>();
    for (const Json::Value& area : showAreas) {
        if (!area.isInt()) {
            LogError("CZRAdPopupModel decode failed, item of show_areas is unvalid");
            return false;
        }
        // 0 is no area.
        if (area.asInt() != 0) {
            m_showAreas->append(ZRAdShowAreaType(area.asInt()));
        }
    }
    const Json::Value& bottomPopup = Member(popup, "bottom_popup");
    if (!IsObject(bottomPopup)) {
        LogError("CZRAdPopupModel decode failed, bottom_popup is unvalid");
        return false;
    }
    m_bottomPopup = new CZRAdBottomPopupModel(this);
    return m_bottomPopup->Decode(bottomPopup);
}
