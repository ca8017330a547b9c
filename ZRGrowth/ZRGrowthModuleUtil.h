#pragma once

#include "modules/IZRGrowthModuleInterface.h"

/// The service. It has no logic: each operation forwards to the manager of its subsystem. The first use creates the
/// manager.
class CZRGrowthModuleUtil : public IZRGrowthModuleInterface {
public:
    CZRGrowthModuleUtil();
    ~CZRGrowthModuleUtil() override;

    void GetAdBannerAsync(int adPosition, QSize size, std::function<void(QWidget*)> callback,
                          int topNonClickableAreaHeight, bool useCheck, QList<QString> adIds) override;
    void UpdateAdBottomPopupCoordinates() override;
    QWidget* GetAdBottomPopupDeveloperView() override;

    unsigned long GetUiMsgAndPremiumAccessReq(bool serverPush) override;
    unsigned long GetUiMsgAndPremiumAccessReq(const QVector<int>& accessList, bool serverPush) override;
    unsigned long GetUiMsgAndPremiumAccessReq(const QVector<EnPremiumAccess>& accessList, bool serverPush) override;
    CPremiumUIData GetUIData(EnPremiumAccess access) const override;
    CPremiumAccessData GetAccessData(EnPremiumAccess access) const override;
    CPremiumUIAccessData GetUIAccessData(EnPremiumAccess access) const override;
    QMap<EnPremiumAccess, CPremiumUIAccessData> GetUIAccessData() const override;
    void SetUIAccessData(EnPremiumAccess access, const CPremiumUIAccessData& data) override;

    IGrowthPremiumWidget* GetPremiumTimeActivationStateWidget(const QString& mainTitle, const QString& mainBtn,
                                                              const QString& uiType, const QString& detailTitle,
                                                              int daysLeft, QWidget* parent) override;
    ZAction* GetPremiumMenuEntryAction(ZMenu* menu) override;
    ZAction* GetVipMenuEntryAction(ZMenu* menu) override;
    QWidget* GetVipTitleBarEntryWidget(QWidget* parent, const CSafeFunction<void()>& fnChanged) override;

    bool HasVipQualification() override;
    int GetVipGrade() override;
    int GetVipState() override;
    bool IsNewVipSystem() override;
    int GetVipEngineStatus() override;
    int GetNewVipState() override;

    bool IsVipIconEnabled(EnPremiumAccess access) override;
    IGrowthVipBaseWidget* GetVipIcon(EnPremiumAccess access, QWidget* parent) override;
    QString GetVipIconImageName() override;
    QSize GetVipIconImageSize() override;
    bool IsVipTagEnabled(EnPremiumAccess access) override;
    IGrowthVipBaseWidget* GetVipTag(EnPremiumAccess access, ZRVipTagType tagType, const QString& pageId,
                                    QWidget* parent) override;
    QString GetVipTagImageName(ZRVipTagType tagType) override;
    QSize GetVipTagImageSize(ZRVipTagType tagType) override;
    bool IsVipBannerEnabled(EnPremiumAccess access, ZRVipUIDataType dataType) override;
    IGrowthVipBaseWidget* GetVipBanner(EnPremiumAccess access, ZRVipUIDataType dataType, const QString& pageId,
                                       QWidget* parent) override;
    bool IsVipMaskEnabled(ZRVipMaskType maskType, EnPremiumAccess access, ZRVipUIDataType dataType) override;
    IGrowthVipBaseWidget* GetVipMask(ZRVipMaskType maskType, EnPremiumAccess access, ZRVipUIDataType dataType,
                                     const QString& pageId, QWidget* parent,
                                     zrstdui::image_blur::WidgetPainterBufferSource bufferSource,
                                     double blurRadiusTheme3, double blurRadiusOther, bool popupStyle) override;
    void HandleVipWidgetClicked(EnPremiumAccess access, ZRVipUIDataType dataType,
                                QPointer<QWidget> activeVipPopupParent) override;
    void OpenVipWebPage(const QString& url) override;

    bool IsAIChatEnable(ZRAIChatEntryScene scene) override;
    void OpenAIChatPage(ZRAIChatPageScene pageScene, const QMap<QString, QString>& params, bool needChangeSessionId,
                        bool showPage) override;
    bool InvokeAIChatWebJSAPI(const QString& name, const Json::Value& params) override;
    bool RegisterAIChatNativeJSAPI(
        const QString& name, std::function<std::shared_ptr<Json::Value>(const Json::Value&, int)> handler) override;
    void RespondToNativeJSAPI(const QString& name, const Json::Value& value) override;
    void UnregisterAIChatNativeJSAPI(const QString& name) override;
    void SetAIChatDevelopEnableType(unsigned int type) override;
};
