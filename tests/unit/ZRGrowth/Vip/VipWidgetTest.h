#pragma once

#include <gmock/gmock.h>

#include <QImage>
#include <QLayout>
#include <functional>
#include <string>
#include <vector>

#include "Ad/AdWindow.h"
#include "Ad/MethodsOf.h"
#include "Premium/ZRPremiumManager.h"
#include "Vip/Controller/ZRVipManager.h"
#include "framework/Ports.h"
#include "support/Click.h"
#include "support/ScriptedHostTest.h"
#include "ui/ThemeControl.h"
#include "ui/ZResource.h"
#include "ui/zr_ui_res.h"
#include "vip_base_service.pb.h"
#include "webview/ZRWebWindowInfo.h"

/// The last right whose entrance is one of market data, and the first whose entrance is a function.
constexpr auto kMarketRight = EnPremiumAccess(98);
constexpr auto kFunctionRight = EnPremiumAccess(99);

/// A user's status by the server's numbers. The default is an expired user of the older system: engine status 3.
struct VipUser {
    unsigned version = 0;
    unsigned grade = 0;
    int state = 0;
    unsigned newState = 2;
    unsigned subState = 0;
};

inline VipUser LegacyUser(unsigned grade = 0) {
    VipUser user;
    user.grade = grade;
    return user;
}

inline VipUser LegacyMember() {
    VipUser user;
    user.state = 1;
    return user;
}

/// A user of the newer system who is no member: engine status 3.
inline VipUser NewUser() {
    VipUser user;
    user.version = 1;
    user.state = 1;  // of the older system, so without effect
    return user;
}

/// A member of the newer system under asset protection: engine status 2.
inline VipUser NewMember() {
    VipUser user;
    user.version = 1;
    user.newState = 1;
    user.subState = 106;
    return user;
}

/// A record with three complete text sets that differ in each field. No link id equals another number of the record.
inline CPremiumUIAccessData RecordOf(int activationType, int daysLeft = -1) {
    CPremiumUIAccessData record;
    record.strUIType = QStringLiteral("D");
    record.strOtherInfo = QStringLiteral("{other}");
    record.strMainTitle = QStringLiteral("Main title");
    record.strMainBtn = QStringLiteral("Main button");
    record.nMainBtnUrlID = 301;
    record.strDetailTitle = QStringLiteral("Detail title");
    record.strDetailBtn = QStringLiteral("Detail button");
    record.nDetailBtnUrlID = 302;
    record.strDetailSubTitle = QStringLiteral("Sub title");
    record.strDetailSubBtn = QStringLiteral("Sub button");
    record.nDetailSubBtnUrlID = 303;
    record.nActivationType = activationType;
    record.nActivationSource = 2;
    record.nDaysLeft = daysLeft;
    return record;
}

/// Passes reports on, and acts after each one.
class CActingReports : public IReports {
public:
    explicit CActingReports(IReports& reports) : m_reports(reports) {}

    bool Report(const ReportEvent& event) override {
        const bool accepted = m_reports.Report(event);
        act();
        return accepted;
    }
    std::shared_ptr<std::string> TimerStart(const std::string& event) override { return m_reports.TimerStart(event); }
    bool TimerEnd(const ReportEvent& event) override { return m_reports.TimerEnd(event); }

    std::function<void()> act;

private:
    IReports& m_reports;
};

/// A window for VIP widgets in the theme kThemeDarkBlue. The user is an expired one of the older system, and no right
/// has a record.
class VipWidgetTest : public ScriptedHostTest {
protected:
    VipWidgetTest() {
        zr_ui_theme::Manager::instance();
        CZRPremiumManager::Singleton()->Init();
        environment.SetVelora(true);
        window.resize(500, 300);
        UserIs(LegacyUser());
    }

    // The end of the window ends exposures, which are no part of the case.
    ~VipWidgetTest() override {
        reports.CheckAllLookedAt();
        window.hide();
        reports.Forget();
        host::Install(ScriptedPorts());
    }

    void UserIs(const VipUser& user) {
        vip_base_service::GetAppEntryMessageRsp answer;
        vip_base_service::VipBasicData* basic = answer.mutable_data()->mutable_vip_basic_data();
        basic->set_vip_version(user.version);
        basic->set_vip_level(user.grade);
        basic->set_vip_state(user.state);
        basic->set_new_vip_state(user.newState);
        basic->set_new_vip_sub_state(user.subState);
        CZRVipManager::Singleton()->RequestVipStatus();
        channel.Reply(channel.LastSession(), 20831, answer);
    }

    static void SetRecord(EnPremiumAccess access, const CPremiumUIAccessData& record) {
        CZRPremiumManager::Singleton()->SetUIAccessData(access, record);
    }

    static void SetTheme(zr_ui_theme::Manager::Theme theme) { host::CThemeControl::Set(theme); }

    void Show() {
        window.show();
        time.Settle();
    }

    /// `act` runs inside each later report.
    void WhenReporting(std::function<void()> act) {
        m_reports.act = std::move(act);
        host::Ports ports = ScriptedPorts();
        ports.reports = &m_reports;
        host::Install(ports);
    }

    /// The image of that name as a label of that size shows it.
    static QImage Scaled(const QString& name, const QSize& size) {
        return zr_ui_res::TResource<QPixmap>(name)
            .value(1.0)
            .scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation)
            .toImage();
    }

    static std::string LayoutOf(const QLayout& layout) {
        const QMargins margins = layout.contentsMargins();
        return std::to_string(margins.left()) + "," + std::to_string(margins.top()) + "," +
               std::to_string(margins.right()) + "," + std::to_string(margins.bottom()) + " " +
               std::to_string(layout.spacing());
    }

    /// The items in their order: the object name of a widget, or its class; "space <width>x<height>"; "stretch"; and
    /// another layout as "(<margins> <spacing>: <items>)".
    static std::vector<std::string> ItemsOf(const QLayout& layout) {
        std::vector<std::string> items;
        for (int i = 0; i < layout.count(); ++i) {
            QLayoutItem* item = layout.itemAt(i);
            if (const QWidget* widget = item->widget()) {
                const std::string alignment =
                    item->alignment() ? " at " + std::to_string(int(item->alignment())) : std::string();
                items.push_back((widget->objectName().isEmpty() ? widget->metaObject()->className()
                                                                : widget->objectName().toStdString()) +
                                alignment);
            } else if (const QLayout* inner = item->layout()) {
                std::string all = "(" + LayoutOf(*inner) + ":";
                for (const std::string& name : ItemsOf(*inner)) {
                    all += " " + name;
                }
                items.push_back(all + ")");
            } else if (item->expandingDirections()) {
                items.emplace_back("stretch");
            } else {
                items.push_back("space " + std::to_string(item->sizeHint().width()) + "x" +
                                std::to_string(item->sizeHint().height()));
            }
        }
        return items;
    }

    CAdWindow window;

private:
    CActingReports m_reports{reports};
};

/// A text of a server that could break a layout.
struct HardText {
    const char* name;
    QString text;
};

inline void PrintTo(const HardText& hard, std::ostream* stream) {
    *stream << hard.name;
}

inline std::vector<HardText> HardTexts() {
    return {
        {"OneWord", QString(10'000, QLatin1Char('W'))},
        {"Words", QStringLiteral("word ").repeated(2'000)},
        {"Lines", QStringLiteral("line\n").repeated(2'000)},
        {"Markup",
         QStringLiteral("<table width=5000><tr><td>words <img src=\"file:///x.png\" width=4000>").repeated(150)},
        {"RightToLeft", QStringLiteral("\u0645\u0631\u062d\u0628\u0627 ").repeated(1'666)},
        {"Emoji", QString::fromUtf8("\xF0\x9F\x98\x80").repeated(5'000)},
    };
}

inline std::string HardTextName(const ::testing::TestParamInfo<HardText>& info) {
    return info.param.name;
}

/// Matches a page that opened without a wished window.
inline ::testing::Matcher<const OpenedUrl&> OpenedWithDefaults(const std::string& url) {
    using namespace ::testing;
    const auto info = [](const OpenedUrl& opened) { return opened.extra.value<core::webview::ZRWebWindowInfo>(); };
    return AllOf(Field("url", &OpenedUrl::url, url), Field("businessType", &OpenedUrl::businessType, 0),
                 Field("fallbackMode", &OpenedUrl::fallbackMode, 1), Field("context", &OpenedUrl::context, IsNull()),
                 ResultOf(
                     "type of extra", [](const OpenedUrl& opened) { return std::string(opened.extra.typeName()); },
                     "core::webview::ZRWebWindowInfo"),
                 ResultOf(
                     "size", [info](const OpenedUrl& opened) { return info(opened).size; }, QSize()),
                 ResultOf(
                     "minimum size", [info](const OpenedUrl& opened) { return info(opened).minimumSize; }, QSize()),
                 ResultOf(
                     "parent", [info](const OpenedUrl& opened) { return info(opened).parent.data(); }, IsNull()));
}

/// Matches a page that opened in a window of the membership's size.
inline ::testing::Matcher<const OpenedUrl&> OpenedAsMembershipPage(const std::string& url) {
    using namespace ::testing;
    return AllOf(
        Field("url", &OpenedUrl::url, url), Field("businessType", &OpenedUrl::businessType, 0),
        Field("fallbackMode", &OpenedUrl::fallbackMode, 1), Field("context", &OpenedUrl::context, IsNull()),
        ResultOf(
            "size", [](const OpenedUrl& opened) { return opened.extra.value<core::webview::ZRWebWindowInfo>().size; },
            QSize(390, 848)));
}
