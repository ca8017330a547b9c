// The widgets that the manager creates, and the way of a click from them.
#include <QApplication>
#include <QImage>

#include "Ad/AdWindow.h"
#include "Premium/ZRPremiumManager.h"
#include "Vip/Controller/ZRVipManager.h"
#include "Vip/View/ZRVipBannerWidget.h"
#include "Vip/View/ZRVipIconWidget.h"
#include "Vip/View/ZRVipMaskWidget.h"
#include "Vip/View/ZRVipTagWidget.h"
#include "Vip/VipStatusTest.h"
#include "premium_svr.pb.h"
#include "support/Click.h"
#include "ui/ThemeControl.h"
#include "ui/ZBackgroundBlurWidget.h"
#include "ui/ZButton.h"
#include "ui/ZToast.h"
#include "webview/ZRWebWindowInfo.h"

using namespace ::testing;
using zrstdui::image_blur::WidgetPainterBufferSource;

namespace {

constexpr auto kRight = EnPremiumAccess(101);
constexpr auto kOtherRight = EnPremiumAccess(7);
constexpr const char* kTarget = R"({"active_premium_popup_info":{"target_url":"https://target.test/a"}})";

CPremiumUIAccessData RecordOf(int activationType) {
    CPremiumUIAccessData record;
    record.strUIType = QStringLiteral("D");
    record.strOtherInfo = QString::fromUtf8(kTarget);
    record.strMainTitle = QStringLiteral("Main title");
    record.strMainBtn = QStringLiteral("Main");
    record.nMainBtnUrlID = 301;
    record.strDetailTitle = QStringLiteral("Detail title");
    record.strDetailBtn = QStringLiteral("Detail");
    record.nDetailBtnUrlID = 302;
    record.nActivationType = activationType;
    record.nActivationSource = 2;
    return record;
}

class VipWidgetsTest : public ScriptedHostTest {
protected:
    VipWidgetsTest() {
        CZRPremiumManager::Singleton()->Init();
        links.Set(301, "https://links.test/main");
        links.Set(302, "https://links.test/detail");
        links.Set(202011732, "https://links.test/centre");
        window.resize(500, 300);
        log.Forget();
    }

    ~VipWidgetsTest() override {
        reports.CheckAllLookedAt();
        window.hide();
        reports.Forget();
        log.CheckAllLookedAt();
    }

    static void SetRecord(const CPremiumUIAccessData& record, EnPremiumAccess access = kRight) {
        CZRPremiumManager::Singleton()->SetUIAccessData(access, record);
    }

    /// A member of grade 3; of the newer system in the Velora edition.
    void UserIsMember() {
        manager->OnLogin();
        channel.Reply(channel.LastSession(), 20831, FullAnswer());
        log.Forget();
        channel.Forget();
    }

    IGrowthVipBaseWidget* NewMask(int type, ZRVipUIDataType dataType = ZRVipUIDataMain,
                                  EnPremiumAccess access = kRight) {
        return manager->GetVipMask(ZRVipMaskType(type), access, dataType, QStringLiteral("page"), &window,
                                   WidgetPainterBufferSource(), 20, 20, false);
    }

    /// Shows the widget alone in the window.
    void Show(QWidget* widget) {
        widget->setGeometry(0, 0, 400, 150);
        widget->show();
        window.show();
        time.Settle();
        log.Forget();
    }

    static ZButton* Button(const QWidget* widget) { return widget->findChild<ZButton*>(); }

    std::vector<std::string> OpenedUrls() {
        std::vector<std::string> opened;
        for (const OpenedUrl& url : urls.Opened()) {
            opened.push_back(url.url);
        }
        return opened;
    }

    std::string PageIdOf(IGrowthVipBaseWidget* widget) {
        Show(widget);
        reports.Forget();
        widget->hide();
        const auto events = reports.Events();
        return events.empty() ? "" : events.back().params;
    }

    CZRVipManager* const manager = CZRVipManager::Singleton();
    CAdWindow window;
};

TEST_F(VipWidgetsTest, EachFactoryCreatesItsOwnClassForItsParent) {
    EXPECT_TRUE(qobject_cast<CZRVipIconWidget*>(manager->GetVipIcon(kRight, &window)));
    EXPECT_TRUE(qobject_cast<CZRVipTagWidget*>(manager->GetVipTag(kRight, ZRVipTagName, QString(), &window)));
    EXPECT_TRUE(qobject_cast<CZRVipBannerWidget*>(manager->GetVipBanner(kRight, ZRVipUIDataMain, QString(), &window)));
    EXPECT_TRUE(qobject_cast<CZRVipLockedMaskWidget*>(NewMask(0)));
    EXPECT_TRUE(qobject_cast<CZRVipLockedMaskWidget*>(NewMask(1)));
    EXPECT_TRUE(qobject_cast<CZRVipExclusiveMaskWidget*>(NewMask(2)));

    EXPECT_THAT(window.findChildren<IGrowthVipBaseWidget*>(QString(), Qt::FindDirectChildrenOnly), SizeIs(6));
    EXPECT_THAT(log.Assertions(), IsEmpty());
}

TEST_F(VipWidgetsTest, EachCallCreatesAnotherWidget) {
    EXPECT_NE(manager->GetVipBanner(kRight, ZRVipUIDataMain, QString(), &window),
              manager->GetVipBanner(kRight, ZRVipUIDataMain, QString(), &window));
    EXPECT_NE(NewMask(0), NewMask(0));
}

TEST_F(VipWidgetsTest, WidgetIsAWindowWhenItHasNoParent) {
    const std::unique_ptr<IGrowthVipBaseWidget> icon(manager->GetVipIcon(kRight, nullptr));
    const std::unique_ptr<IGrowthVipBaseWidget> banner(
        manager->GetVipBanner(kRight, ZRVipUIDataMain, QString(), nullptr));

    EXPECT_TRUE(icon->isWindow());
    EXPECT_TRUE(banner->isWindow());
}

TEST_F(VipWidgetsTest, ThereIsNoMaskOfATypeWithoutAName) {
    const auto before = QApplication::allWidgets().size();
    for (const int type : {3, -1, 100, -100}) {
        EXPECT_EQ(NewMask(type), nullptr) << type;
    }
    EXPECT_EQ(QApplication::allWidgets().size(), before);
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(VipWidgetsTest, OnlyTheLockedMaskHasATextAndItsHeight) {
    EXPECT_EQ(NewMask(0)->minimumHeight(), 100);
    EXPECT_EQ(NewMask(1)->minimumHeight(), 64);
    EXPECT_EQ(NewMask(2)->minimumHeight(), 64);
}

TEST_F(VipWidgetsTest, WidgetsGetTheirRightAndTextSet) {
    SetRecord(RecordOf(5));
    SetRecord(CPremiumUIAccessData(), kOtherRight);

    manager->GetVipBanner(kRight, ZRVipUIDataDetail, QString(), &window);
    NewMask(0, ZRVipUIDataDetail);
    NewMask(2, ZRVipUIDataDetail);

    EXPECT_THAT(log.Lines(),
                ElementsAre(Info(StartsWith("[Vip] Refresh Banner UI, Access = 101, Data Type = 2, Title Text = "
                                            "Detail title, Btn Text = Detail, Btn URL ID = 302")),
                            Info(StartsWith("[Vip] Refresh Vip Locked Mask UI, Access = 101, Data Type = 2, Title "
                                            "Text = Detail title, Btn Text = Detail, Btn URL ID = 302")),
                            Info("[Vip] Refresh Vip Exclusive Mask UI, Access = 101, Data Type = 2, Btn Text = "
                                 "Detail, Btn URL ID = 302")));
}

TEST_F(VipWidgetsTest, WidgetsReportThePageOfTheirCaller) {
    SetRecord(RecordOf(5));
    const std::string page = "\"page_id\":\"page\"";

    EXPECT_THAT(PageIdOf(manager->GetVipBanner(kRight, ZRVipUIDataMain, QStringLiteral("page"), &window)),
                HasSubstr(page));
    for (const int type : {0, 1, 2}) {
        EXPECT_THAT(PageIdOf(NewMask(type)), HasSubstr(page)) << type;
    }
    EXPECT_THAT(PageIdOf(manager->GetVipTag(kRight, ZRVipTagName, QStringLiteral("page"), &window)),
                HasSubstr("\"permission_type\":\"101\""));
    EXPECT_EQ(PageIdOf(manager->GetVipIcon(kRight, &window)), "");
}

TEST_F(VipWidgetsTest, IconHasItsImageAndTheNameOfTheCallersImage) {
    EXPECT_EQ(manager->GetVipIconImageName(), QStringLiteral("icon_vip_16_normal"));
    EXPECT_EQ(manager->GetVipIconImageSize(), QSize(16, 16));
    EXPECT_EQ(manager->GetVipIcon(kRight, &window)->size(), QSize(16, 16));
}

TEST_F(VipWidgetsTest, IconIsEmptyOnTheNewerSystem) {
    environment.SetVelora(true);
    UserIsMember();

    EXPECT_EQ(manager->GetVipIconImageName(), QString());
    EXPECT_EQ(manager->GetVipIconImageSize(), QSize(0, 0));
}

TEST_F(VipWidgetsTest, TagImageIsOfTheGradeOfTheUser) {
    UserIsMember();

    EXPECT_EQ(manager->GetVipTagImageName(ZRVipTagGrade), QStringLiteral("img_viptab3_26x16_normal"));
    EXPECT_EQ(manager->GetVipTagImageSize(ZRVipTagGrade), QSize(26, 16));
    EXPECT_EQ(manager->GetVipTag(kRight, ZRVipTagGrade, QString(), &window)->size(), QSize(26, 16));
}

TEST_F(VipWidgetsTest, TagImageIsOfTheLanguageWhenItIsOfTheName) {
    UserIsMember();

    EXPECT_EQ(manager->GetVipTagImageName(ZRVipTagName), QStringLiteral("img_viptaben_76x16_normal"));
    EXPECT_EQ(manager->GetVipTagImageSize(ZRVipTagName), QSize(76, 16));
    EXPECT_EQ(manager->GetVipTag(kRight, ZRVipTagName, QString(), &window)->size(), QSize(76, 16));
    language.Set(5);
    EXPECT_EQ(manager->GetVipTagImageSize(ZRVipTagName), QSize(71, 16));
}

TEST_F(VipWidgetsTest, TagHasNoImageWhenTheUserHasNoGrade) {
    EXPECT_EQ(manager->GetVipTagImageName(ZRVipTagGrade), QString());
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(VipWidgetsTest, IconAndTagFollowTheirRules) {
    SetRecord(RecordOf(3));
    EXPECT_TRUE(manager->IsVipIconEnabled(kRight));
    EXPECT_TRUE(manager->IsVipTagEnabled(kRight));

    SetRecord(RecordOf(5));
    EXPECT_TRUE(manager->IsVipIconEnabled(kRight));
    EXPECT_FALSE(manager->IsVipTagEnabled(kRight));
    EXPECT_FALSE(manager->IsVipIconEnabled(kOtherRight));
    EXPECT_FALSE(manager->IsVipTagEnabled(kOtherRight));

    EXPECT_THAT(
        log.Lines(),
        ElementsAre(
            Info("[Vip] Vip Tag Disabled, Activation Type Not Full, Premium Access = 101"),
            Info("[Vip] Vip Icon Disabled, Activation Source Not Vip, Premium Access = 7, Activation Source = 0"),
            Info("[Vip] Vip Tag Disabled, Activation Source Not Vip, Premium Access = 7, Activation Source = 0")));
}

TEST_F(VipWidgetsTest, BannerFollowsItsRule) {
    SetRecord(RecordOf(1));

    EXPECT_TRUE(manager->IsVipBannerEnabled(kRight, ZRVipUIDataMain));
    EXPECT_FALSE(manager->IsVipBannerEnabled(kRight, ZRVipUIDataDetailSub));
    EXPECT_FALSE(manager->IsVipBannerEnabled(kOtherRight, ZRVipUIDataMain));

    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Vip] Vip Banner Disabled, Empty Premium Data, Premium Access = 101, Data Type = 3"),
                            Info("[Vip] Vip Banner Disabled, UI Type Mismatch, Premium Access = 7, UI Type = ")));
}

TEST_F(VipWidgetsTest, OnlyTheExclusiveMaskIsEnabledWithoutATitle) {
    CPremiumUIAccessData record = RecordOf(5);
    record.strMainTitle.clear();
    SetRecord(record);

    EXPECT_TRUE(manager->IsVipMaskEnabled(ZRVipMaskExclusive, kRight, ZRVipUIDataMain));
    EXPECT_THAT(log.Lines(), IsEmpty());
    for (const int type : {0, 1, 3, -1, 100}) {
        EXPECT_FALSE(manager->IsVipMaskEnabled(ZRVipMaskType(type), kRight, ZRVipUIDataMain)) << type;
        EXPECT_TRUE(manager->IsVipMaskEnabled(ZRVipMaskType(type), kRight, ZRVipUIDataDetail)) << type;
        EXPECT_THAT(log.Lines(), ElementsAre(Info("[Vip] Vip Locked Mask Disabled, Empty Premium Data, Premium Access "
                                                  "= 101, Data Type = 1")));
        log.Forget();
    }
    EXPECT_FALSE(manager->IsVipMaskEnabled(ZRVipMaskExclusive, kOtherRight, ZRVipUIDataMain));
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Vip] Vip Exclusive Mask Disabled, UI Type Mismatch, Premium Access = "
                                              "7, UI Type = ")));
}

struct MaskRow {
    const char* name;
    int type;
    double radiusTheme3;
    double radiusOther;
    bool theme3;
    bool blurs;
};

void PrintTo(const MaskRow& row, std::ostream* stream) {
    *stream << row.name;
}

/// A mask over a window without anything else on it. A radius of 0 blurs nothing.
class VipMaskArgumentsTest : public VipWidgetsTest, public WithParamInterface<MaskRow> {
protected:
    VipMaskArgumentsTest() {
        zr_ui_theme::Manager::instance();
        host::CThemeControl::Set(GetParam().theme3 ? zr_ui_theme::Manager::kThemeBlack
                                                   : zr_ui_theme::Manager::kThemeLight);
        SetRecord(RecordOf(5));
        source.setStyleSheet(QStringLiteral("background: #ff0000"));
        source.setAttribute(Qt::WA_StyledBackground);
        source.setGeometry(0, 0, 500, 300);
        other.setStyleSheet(QStringLiteral("background: #0000ff"));
        other.setAttribute(Qt::WA_StyledBackground);
        other.setGeometry(0, 0, 500, 300);
    }

    IGrowthVipBaseWidget* NewMaskOver(QWidget* behind, bool popupStyle) {
        const MaskRow& row = GetParam();
        return manager->GetVipMask(ZRVipMaskType(row.type), kRight, ZRVipUIDataMain, QString(), &window,
                                   WidgetPainterBufferSource(behind), row.radiusTheme3, row.radiusOther, popupStyle);
    }

    /// The colour near the corner of the mask.
    QColor ColorOf(QWidget* mask) {
        Show(mask);
        const QColor color = mask->grab().toImage().pixelColor(20, 20);
        delete mask;
        reports.Forget();
        return color;
    }

    /// The same of a mask that the test makes itself.
    QColor ColorLike(bool popupStyle) {
        const MaskRow& row = GetParam();
        const WidgetPainterBufferSource behind(&source);
        if (row.type == ZRVipMaskExclusive) {
            return ColorOf(new CZRVipExclusiveMaskWidget(kRight, ZRVipUIDataMain, QString(), &window, behind,
                                                         row.radiusTheme3, row.radiusOther, popupStyle));
        }
        return ColorOf(new CZRVipLockedMaskWidget(ZRVipMaskType(row.type), kRight, ZRVipUIDataMain, QString(), &window,
                                                  behind, row.radiusTheme3, row.radiusOther, popupStyle));
    }

    QWidget other{&window};  // below the source
    QWidget source{&window};
};

TEST_P(VipMaskArgumentsTest, FirstRadiusIsOfThemeThreeAndTheSecondOfAllOthers) {
    QWidget* mask = NewMaskOver(&source, false);
    Show(mask);
    mask->grab();

    EXPECT_EQ(mask->findChild<ZBackgroundBlurWidget*>()->blurCount() > 0, GetParam().blurs);
    reports.Forget();
}

TEST_P(VipMaskArgumentsTest, MaskGetsItsSourceAndItsStyle) {
    for (const bool popupStyle : {false, true}) {
        const QColor actual = ColorOf(NewMaskOver(&source, popupStyle));

        EXPECT_EQ(actual.name(), ColorLike(popupStyle).name());
        EXPECT_NE(actual.name(), ColorLike(!popupStyle).name());
        if (GetParam().blurs) {
            EXPECT_NE(actual.name(), ColorOf(NewMaskOver(&other, popupStyle)).name());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Masks, VipMaskArgumentsTest,
    Values(MaskRow{"Locked", 0, 0, 12, false, true}, MaskRow{"LockedWithoutBlur", 0, 12, 0, false, false},
           MaskRow{"LockedInTheme3", 0, 12, 0, true, true}, MaskRow{"Compact", 1, 0, 12, false, true},
           MaskRow{"CompactInTheme3", 1, 12, 0, true, true},
           MaskRow{"CompactInTheme3WithoutBlur", 1, 0, 12, true, false}, MaskRow{"Exclusive", 2, 0, 12, false, true},
           MaskRow{"ExclusiveInTheme3", 2, 12, 0, true, true},
           MaskRow{"ExclusiveInTheme3WithoutBlur", 2, 0, 12, true, false}),
    [](const auto& row) { return std::string(row.param.name); });

// The way of a click.

struct ClickRow {
    const char* name;
    int mask;  // -1: a banner
};

void PrintTo(const ClickRow& row, std::ostream* stream) {
    *stream << row.name;
}

class VipWidgetClickTest : public VipWidgetsTest, public WithParamInterface<ClickRow> {
protected:
    IGrowthVipBaseWidget* NewWidget(ZRVipUIDataType dataType) {
        return GetParam().mask < 0 ? manager->GetVipBanner(kRight, dataType, QString(), &window)
                                   : NewMask(GetParam().mask, dataType);
    }

    void Emit(QWidget* widget, EnPremiumAccess access, ZRVipUIDataType dataType, QWidget* over) {
        if (auto* banner = qobject_cast<CZRVipBannerWidget*>(widget)) {
            Q_EMIT banner->ActionButtonClicked(access, dataType, over);
        } else if (auto* mask = qobject_cast<CZRVipLockedMaskWidget*>(widget)) {
            Q_EMIT mask->ActionButtonClicked(access, dataType, over);
        }
    }
};

TEST_P(VipWidgetClickTest, ButtonOpensTheLinkOfItsTextSetOnce) {
    SetRecord(RecordOf(5));
    IGrowthVipBaseWidget* widget = NewWidget(ZRVipUIDataDetail);
    Show(widget);

    Click(Button(widget));

    EXPECT_THAT(OpenedUrls(), ElementsAre("https://links.test/detail"));
    EXPECT_THAT(reports.Names(), ElementsAre("ClickPremiumFunctionEntrance"));
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Vip] Click vip widget, access = 101, dataType = 2, btnUrlID = 302, "
                                              "url = https://links.test/detail")));
}

TEST_P(VipWidgetClickTest, ButtonActivatesAReadyRightOverItsWindow) {
    SetRecord(RecordOf(6));
    IGrowthVipBaseWidget* widget = NewWidget(ZRVipUIDataMain);
    Show(widget);

    Click(Button(widget));

    EXPECT_THAT(reports.Names(), SizeIs(1));
    EXPECT_THAT(OpenedUrls(), IsEmpty());
    ASSERT_THAT(channel.Sent(), SizeIs(1));
    EXPECT_EQ(channel.Sent()[0].cmd, 20981u);
    EXPECT_EQ(channel.Sent()[0].body, std::string("\x08\x02\x10\x65", 4));
    channel.Fail(channel.LastSession(), kCSProtoTimedOut);
    time.Settle();
    EXPECT_THAT(window.findChildren<ZToast*>(QString(), Qt::FindDirectChildrenOnly), SizeIs(1));
    log.Forget();
}

TEST_P(VipWidgetClickTest, SignalDecidesWhatIsClickedAndNotTheWidget) {
    SetRecord(RecordOf(5));
    CPremiumUIAccessData ready = RecordOf(6);
    SetRecord(ready, kOtherRight);
    IGrowthVipBaseWidget* widget = NewWidget(ZRVipUIDataMain);
    QWidget other;
    log.Forget();

    Emit(widget, kRight, ZRVipUIDataDetail, nullptr);
    EXPECT_THAT(OpenedUrls(), ElementsAre("https://links.test/detail"));

    Emit(widget, kOtherRight, ZRVipUIDataMain, &other);
    ASSERT_THAT(channel.Sent(), SizeIs(1));
    EXPECT_EQ(channel.Sent()[0].body, std::string("\x08\x02\x10\x07", 4));
    channel.Fail(channel.LastSession(), kCSProtoTimedOut);
    time.Settle();
    EXPECT_THAT(other.findChildren<ZToast*>(), SizeIs(1));
    EXPECT_THAT(window.findChildren<ZToast*>(), IsEmpty());
    log.Forget();
}

TEST_P(VipWidgetClickTest, ClickIsHandledInsideTheSignal) {
    SetRecord(RecordOf(5));
    IGrowthVipBaseWidget* widget = NewWidget(ZRVipUIDataMain);

    Emit(widget, kRight, ZRVipUIDataMain, nullptr);

    EXPECT_THAT(OpenedUrls(), SizeIs(1));  // without a turn of the event loop
    log.Forget();
}

TEST_P(VipWidgetClickTest, WidgetMayGoInsideItsOwnClick) {
    SetRecord(RecordOf(5));
    QPointer<IGrowthVipBaseWidget> widget = NewWidget(ZRVipUIDataMain);
    Show(widget);
    urls.WhenOpening([&widget] { delete widget; });

    Click(Button(widget));

    EXPECT_FALSE(widget);
    EXPECT_THAT(OpenedUrls(), ElementsAre("https://links.test/main"));
    reports.Forget();
}

TEST_P(VipWidgetClickTest, WidgetOfAManagerThatIsGoneOpensNothing) {
    SetRecord(RecordOf(5));
    auto passing = std::make_unique<CZRVipManager>();
    passing->Init();
    IGrowthVipBaseWidget* widget =
        GetParam().mask < 0 ? passing->GetVipBanner(kRight, ZRVipUIDataMain, QString(), &window)
                            : passing->GetVipMask(ZRVipMaskType(GetParam().mask), kRight, ZRVipUIDataMain, QString(),
                                                  &window, WidgetPainterBufferSource(), 20, 20, false);

    passing.reset();
    Emit(widget, kRight, ZRVipUIDataMain, nullptr);

    EXPECT_THAT(OpenedUrls(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Widgets, VipWidgetClickTest,
                         Values(ClickRow{"Banner", -1}, ClickRow{"LockedMask", 0}, ClickRow{"CompactMask", 1}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(VipWidgetsTest, ExclusiveMaskOpensItsPageItselfAndNeverActivates) {
    SetRecord(RecordOf(6));
    IGrowthVipBaseWidget* mask = NewMask(2, ZRVipUIDataDetail);
    Show(mask);

    Click(mask);

    EXPECT_THAT(OpenedUrls(), ElementsAre("https://links.test/detail"));
    EXPECT_EQ(urls.Opened()[0].extra.value<core::webview::ZRWebWindowInfo>().size, QSize());
    EXPECT_THAT(channel.Sent(), IsEmpty());
    EXPECT_THAT(reports.Names(), SizeIs(1));
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(VipWidgetsTest, TagOpensTheMembershipCentreWhateverTheRight) {
    SetRecord(RecordOf(6));
    IGrowthVipBaseWidget* tag = manager->GetVipTag(kRight, ZRVipTagName, QString(), &window);
    tag->show();
    window.show();
    time.Settle();

    Click(tag);

    EXPECT_THAT(OpenedUrls(), ElementsAre("https://links.test/centre"));
    EXPECT_THAT(links.Asked(), ElementsAre(202011732ul));
    EXPECT_THAT(channel.Sent(), IsEmpty());
    EXPECT_THAT(reports.Names(), ElementsAre("ClickMemberIcon"));
}

}  // namespace
