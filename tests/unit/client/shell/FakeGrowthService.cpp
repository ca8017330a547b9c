#include "FakeGrowthService.h"

#include <QWidget>

#include "EntryScenes.h"
#include "core/message_dispatch.h"
#include "plugin/IZRPluginCenter.h"
#include "plugin/IZRPluginInterfaceFactory.h"
#include "ui/ZMenu.h"

namespace {

class CFakeFactory : public IZRPluginInterfaceFactory {
public:
    explicit CFakeFactory(std::weak_ptr<CFakeGrowthService> service) : m_service(std::move(service)) {}

    std::string GetInterfaceName() override { return "24IZRGrowthModuleInterface"; }
    std::shared_ptr<IZRPluginInterface> CreateInterface() override { return m_service.lock(); }

private:
    std::weak_ptr<CFakeGrowthService> m_service;
};

}  // namespace

std::shared_ptr<CFakeGrowthService> CFakeGrowthService::Offer() {
    auto service = std::make_shared<CFakeGrowthService>();
    IZRPluginCenter::RegisterInterfaceFactory(std::make_shared<CFakeFactory>(service), true);
    return service;
}

void CFakeGrowthService::GetAdBannerAsync(int adPosition, QSize size, std::function<void(QWidget*)> callback,
                                          int topNonClickableAreaHeight, bool useCheck, QList<QString> adIds) {
    EXPECT_EQ(topNonClickableAreaHeight, 0);
    EXPECT_FALSE(useCheck);
    EXPECT_TRUE(adIds.isEmpty());
    banners.push_back({adPosition, size, std::move(callback)});
}

QWidget* CFakeGrowthService::GetAdBottomPopupDeveloperView() {
    ++panels;
    auto* panel = new QWidget;
    panel->setObjectName(QStringLiteral("Panel"));
    panel->setFixedWidth(1500);
    return panel;
}

unsigned long CFakeGrowthService::GetUiMsgAndPremiumAccessReq(bool serverPush) {
    asked.emplace_back(serverPush ? "all push" : "all wait");
    return session;
}

unsigned long CFakeGrowthService::GetUiMsgAndPremiumAccessReq(const QVector<int>& accessList, bool serverPush) {
    std::string words;
    for (const int access : accessList) {
        words += std::to_string(access) + " ";
    }
    asked.push_back(words + (serverPush ? "push" : "wait"));
    return session;
}

unsigned long CFakeGrowthService::GetUiMsgAndPremiumAccessReq(const QVector<EnPremiumAccess>& /*accessList*/,
                                                              bool /*serverPush*/) {
    ADD_FAILURE() << "the client asks by numbers";
    return 0;
}

ZAction* CFakeGrowthService::GetVipMenuEntryAction(ZMenu* menu) {
    ++menuEntries;
    auto* action = new ZAction(menu);
    action->setText(QStringLiteral("Membership"));
    return action;
}

QWidget* CFakeGrowthService::GetVipTitleBarEntryWidget(QWidget* parent, const CSafeFunction<void()>& fnChanged) {
    ++titleEntries;
    titleChanged = fnChanged;
    return new QWidget(parent);
}

IGrowthVipBaseWidget* CFakeGrowthService::GetVipIcon(EnPremiumAccess access, QWidget* parent) {
    return Created(new CFakeVipWidget(access, ZRVipUIDataMain, parent), {});
}

IGrowthVipBaseWidget* CFakeGrowthService::GetVipTag(EnPremiumAccess access, ZRVipTagType tagType, const QString& pageId,
                                                    QWidget* parent) {
    return Created(new CFakeVipWidget(access, ZRVipUIDataMain, parent), {{}, tagType, pageId});
}

IGrowthVipBaseWidget* CFakeGrowthService::GetVipBanner(EnPremiumAccess access, ZRVipUIDataType dataType,
                                                       const QString& pageId, QWidget* parent) {
    return Created(new CFakeVipWidget(access, dataType, parent), {{}, 0, pageId});
}

IGrowthVipBaseWidget* CFakeGrowthService::GetVipMask(ZRVipMaskType maskType, EnPremiumAccess access,
                                                     ZRVipUIDataType dataType, const QString& pageId, QWidget* parent,
                                                     zrstdui::image_blur::WidgetPainterBufferSource bufferSource,
                                                     double /*blurRadiusTheme3*/, double /*blurRadiusOther*/,
                                                     bool /*popupStyle*/) {
    return Created(new CFakeVipWidget(access, dataType, parent), {{}, maskType, pageId, bufferSource.widget()});
}

CFakeVipWidget* CFakeGrowthService::Created(CFakeVipWidget* widget, VipCreated how) {
    how.widget = widget;
    vipCreated.push_back(how);
    return widget;
}

void CFakeGrowthService::HandleVipWidgetClicked(EnPremiumAccess /*access*/, ZRVipUIDataType /*dataType*/,
                                                QPointer<QWidget> /*activeVipPopupParent*/) {
    ++vipClicks;
}

CPremiumUIAccessData RecordOf(EnPremiumAccess right, bool hasPermission, const char* mainTitle) {
    CPremiumUIAccessData record;
    record.enUIAccess = right;
    record.enAccess = right;
    record.strUIType = QStringLiteral("D");
    record.strOtherInfo = QStringLiteral(R"({"group":"market","tags":[1,2]})");
    record.strMainTitle = QString::fromUtf8(mainTitle);
    record.strMainBtn = QStringLiteral("main button");
    record.strDetailTitle = QStringLiteral("detail title");
    record.strDetailSubTitle = QStringLiteral("detail sub title");
    record.strDetailBtn = QStringLiteral("detail button");
    record.strDetailSubBtn = QStringLiteral("detail sub button");
    record.nMainBtnUrlID = 101;
    record.nDetailBtnUrlID = 102;
    record.nDetailSubBtnUrlID = 103;
    record.bHasPermission = hasPermission;
    record.nActivationType = 3;
    record.nDaysLeft = 12;
    record.nActivationSource = 2;
    return record;
}

bool CFakeGrowthService::IsAIChatEnable(ZRAIChatEntryScene scene) {
    return overrideType != 0 ? overrideType == 1 : open.count(int(scene)) != 0;
}

void CFakeGrowthService::SetAIChatDevelopEnableType(unsigned int type) {
    overrideType = type;
    core::__CMessageDispatch("[Test]").Send(kMsgAIChatEntriesChanged, nullptr, true);
}
