#pragma once

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "modules/IZRGrowthModuleInterface.h"
#include "ui/ZAction.h"

/// A VIP widget that records its updates.
class CFakeVipWidget : public IGrowthVipBaseWidget {
public:
    CFakeVipWidget(EnPremiumAccess access, ZRVipUIDataType dataType, QWidget* parent)
        : IGrowthVipBaseWidget(parent), right(access), texts(dataType) {}

    void UpdateUIData(EnPremiumAccess access, ZRVipUIDataType dataType) override {
        right = access;
        texts = dataType;
        ++updates;
    }

    EnPremiumAccess right;
    ZRVipUIDataType texts;
    int updates = 0;
};

/// A premium strip that records its values and its function.
class CFakePremiumStrip : public IGrowthPremiumWidget {
public:
    using IGrowthPremiumWidget::IGrowthPremiumWidget;

    void SetCallback(std::function<void(bool)> callback, QObject* context) override { clicked = {context, callback}; }
    void SetShowCallback(std::function<void(bool)> /*callback*/, QObject* /*context*/) override {}
    void UpdateUiData(const QString& mainTitle, const QString& mainBtn, const QString& uiType,
                      const QString& detailTitle, int daysLeft) override {
        shown = QStringList{mainTitle, mainBtn, uiType, detailTitle, QString::number(daysLeft)}
                    .join(QLatin1Char('|'))
                    .toStdString();
        ++updates;
    }

    CSafeFunction<void(bool)> clicked;
    std::string shown;  // "title|button|type|detail|days"
    int updates = 0;
};

/// A growth module service for the client. The test sets the open scenes, the user's rights and the VIP status.
class CFakeGrowthService : public IZRGrowthModuleInterface {
public:
    /// Registers a service at the plug-in centre while the result exists.
    static std::shared_ptr<CFakeGrowthService> Offer();

    void GetAdBannerAsync(int adPosition, QSize size, std::function<void(QWidget*)> callback,
                          int topNonClickableAreaHeight, bool useCheck, QList<QString> adIds) override;
    void UpdateAdBottomPopupCoordinates() override { ++popupPlacings; }
    QWidget* GetAdBottomPopupDeveloperView() override;

    unsigned long GetUiMsgAndPremiumAccessReq(bool serverPush) override;
    unsigned long GetUiMsgAndPremiumAccessReq(const QVector<int>& accessList, bool serverPush) override;
    unsigned long GetUiMsgAndPremiumAccessReq(const QVector<EnPremiumAccess>& accessList, bool serverPush) override;
    CPremiumUIData GetUIData(EnPremiumAccess access) const override { return table.value(access); }
    CPremiumAccessData GetAccessData(EnPremiumAccess access) const override { return table.value(access); }
    CPremiumUIAccessData GetUIAccessData(EnPremiumAccess access) const override { return table.value(access); }
    QMap<EnPremiumAccess, CPremiumUIAccessData> GetUIAccessData() const override { return table; }
    void SetUIAccessData(EnPremiumAccess access, const CPremiumUIAccessData& data) override { table[access] = data; }
    bool HasVipQualification() override { return qualification; }
    int GetVipGrade() override { return grade; }
    int GetVipState() override { return state; }
    bool IsNewVipSystem() override { return isNewSystem; }
    int GetVipEngineStatus() override { return engine; }
    int GetNewVipState() override { return newState; }

    IGrowthPremiumWidget* GetPremiumTimeActivationStateWidget(const QString& mainTitle, const QString& mainBtn,
                                                              const QString& uiType, const QString& detailTitle,
                                                              int daysLeft, QWidget* parent) override;
    ZAction* GetPremiumMenuEntryAction(ZMenu* menu) override;
    ZAction* GetVipMenuEntryAction(ZMenu* menu) override;
    QWidget* GetVipTitleBarEntryWidget(QWidget* parent, const CSafeFunction<void()>& fnChanged) override;
    bool IsVipIconEnabled(EnPremiumAccess access) override { return icons.count(access) != 0; }
    IGrowthVipBaseWidget* GetVipIcon(EnPremiumAccess access, QWidget* parent) override;
    QString GetVipIconImageName() override { return {}; }
    QSize GetVipIconImageSize() override { return {}; }
    bool IsVipTagEnabled(EnPremiumAccess access) override { return tags.count(access) != 0; }
    IGrowthVipBaseWidget* GetVipTag(EnPremiumAccess access, ZRVipTagType tagType, const QString& pageId,
                                    QWidget* parent) override;
    QString GetVipTagImageName(ZRVipTagType /*tagType*/) override { return {}; }
    QSize GetVipTagImageSize(ZRVipTagType /*tagType*/) override { return {}; }
    bool IsVipBannerEnabled(EnPremiumAccess access, ZRVipUIDataType /*dataType*/) override {
        return vipBanners.count(access) != 0;
    }
    IGrowthVipBaseWidget* GetVipBanner(EnPremiumAccess access, ZRVipUIDataType dataType, const QString& pageId,
                                       QWidget* parent) override;
    bool IsVipMaskEnabled(ZRVipMaskType /*maskType*/, EnPremiumAccess access, ZRVipUIDataType /*dataType*/) override {
        return masks.count(access) != 0;
    }
    IGrowthVipBaseWidget* GetVipMask(ZRVipMaskType maskType, EnPremiumAccess access, ZRVipUIDataType dataType,
                                     const QString& pageId, QWidget* parent,
                                     zrstdui::image_blur::WidgetPainterBufferSource bufferSource,
                                     double blurRadiusTheme3, double blurRadiusOther, bool popupStyle) override;
    void HandleVipWidgetClicked(EnPremiumAccess access, ZRVipUIDataType dataType,
                                QPointer<QWidget> activeVipPopupParent) override;
    void OpenVipWebPage(const QString& url) override { openedPages.push_back(url); }

    bool IsAIChatEnable(ZRAIChatEntryScene scene) override;
    void OpenAIChatPage(ZRAIChatPageScene pageScene, const QMap<QString, QString>& params, bool needChangeSessionId,
                        bool showPage) override {
        EXPECT_TRUE(params.isEmpty());
        EXPECT_FALSE(needChangeSessionId);
        EXPECT_TRUE(showPage);
        openedChats.push_back(int(pageScene));
    }
    bool InvokeAIChatWebJSAPI(const QString& name, const Json::Value& params) override {
        chatEvents.emplace_back(name.toStdString(), params);
        return true;
    }
    using ChatHandler = std::function<std::shared_ptr<Json::Value>(const Json::Value&, int)>;
    bool RegisterAIChatNativeJSAPI(const QString& name, ChatHandler handler) override {
        return chatHandlers.emplace(name.toStdString(), std::move(handler)).second;
    }
    void RespondToNativeJSAPI(const QString& /*name*/, const Json::Value& /*value*/) override {}
    void UnregisterAIChatNativeJSAPI(const QString& /*name*/) override {}
    void SetAIChatDevelopEnableType(unsigned int type) override;

    std::set<int> open;
    unsigned int overrideType = 0;

    struct BannerAsked {
        int position;
        QSize size;
        std::function<void(QWidget*)> callback;
    };
    std::vector<BannerAsked> banners;  // requests so far
    int popupPlacings = 0;
    int panels = 0;  // created so far

    QMap<EnPremiumAccess, CPremiumUIAccessData> table;
    unsigned long session = 0;       // of the next request
    std::vector<std::string> asked;  // "all push", "1 5 wait", one for each request
    bool qualification = false;
    int grade = 0;
    int state = 0;
    bool isNewSystem = false;
    int engine = kVipEngineUndetermined;
    int newState = 0;

    // The rights that the rules enable.
    std::set<int> icons, tags, vipBanners, masks;
    struct VipCreated {
        QPointer<QWidget> widget;
        int type = 0;  // of a tag or mask
        QString pageId;
        QWidget* source = nullptr;  // of a mask's blur
    };
    std::vector<VipCreated> vipCreated;
    std::vector<QPointer<CFakePremiumStrip>> strips;
    CSafeFunction<void()> titleChanged;
    std::vector<QString> openedPages;
    std::vector<int> openedChats;  // page scenes
    std::vector<std::pair<std::string, Json::Value>> chatEvents;
    std::map<std::string, ChatHandler> chatHandlers;
    int premiumEntries = 0;  // created so far
    int menuEntries = 0;     // created so far
    int titleEntries = 0;    // created so far
    int vipClicks = 0;

private:
    CFakeVipWidget* Created(CFakeVipWidget* widget, VipCreated how);
};

/// A record with a different value in each field.
CPremiumUIAccessData RecordOf(EnPremiumAccess right, bool hasPermission, const char* mainTitle);
