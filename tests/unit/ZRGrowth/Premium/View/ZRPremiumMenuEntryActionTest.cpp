#include "Premium/View/ZRPremiumMenuEntryAction.h"

#include <QMetaMethod>
#include <QTest>

#include "Vip/VipWidgetTest.h"
#include "ui/ZMenu.h"

using namespace ::testing;

namespace {

constexpr const char* kPage = "https://www.test/member";
const ReportedEvent kView{"ViewPremiumFunctionEntrance", 4,
                          R"({"engine_status":3,"page_id":"2","permission_type":"1000"})", 0, false};
const ReportedEvent kClick{"ClickPremiumFunctionEntrance", 3, R"({"engine_status":3,"permission_type":"1000"})", 0,
                           false};

class PremiumMenuEntryActionTest : public VipWidgetTest {
protected:
    PremiumMenuEntryActionTest() { links.Set(301, kPage); }

    static void SetEntry(int activationType, int linkId = 301, const char* text = "Member page") {
        CPremiumUIAccessData record = RecordOf(activationType);
        record.nMainBtnUrlID = linkId;
        record.strMainBtn = QString::fromUtf8(text);
        SetRecord(EnPremiumAccess_MyPagePremium, record);
    }

    std::vector<std::string> EntryLines() {
        std::vector<std::string> lines;
        for (const auto& line : log.Lines()) {
            if (line.text.find("Premium Menu Entry") != std::string::npos) {
                lines.push_back(line.text);
            }
        }
        return lines;
    }

    ZMenu menu;
};

TEST_F(PremiumMenuEntryActionTest, EntryHasOnePrivateSlot) {
    const QMetaObject& object = CZRPremiumMenuEntryAction::staticMetaObject;
    EXPECT_EQ(object.superClass(), &ZAction::staticMetaObject);
    EXPECT_THAT(MethodsOf(object), ElementsAre("slot OnEntryClicked()"));
    EXPECT_EQ(object.method(object.methodOffset()).access(), QMetaMethod::Private);
}

TEST_F(PremiumMenuEntryActionTest, EntryShowsCrownAndTextAndReportsAView) {
    SetEntry(1);
    log.Forget();

    const CZRPremiumMenuEntryAction entry(&menu);

    EXPECT_EQ(entry.parent(), &menu);
    EXPECT_THAT(menu.actions(), IsEmpty());
    EXPECT_TRUE(entry.isVisible());
    EXPECT_EQ(entry.text().toStdString(), "Member page");
    ZAction expected;
    expected.setSvgIcon(ZResource::icon_premium_crown_16, ZIconColorStyle::normal);
    EXPECT_EQ(entry.icon().pixmap(16, 16).toImage(), expected.icon().pixmap(16, 16).toImage());
    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Premium] Premium Menu Entry Refreshed, Visible = true, Text = Member page")));
    EXPECT_THAT(reports.Events(), ElementsAre(kView));
}

TEST_F(PremiumMenuEntryActionTest, EntryIsHiddenWithoutARecord) {
    log.Forget();

    const CZRPremiumMenuEntryAction entry(&menu);

    EXPECT_FALSE(entry.isVisible());
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Premium] Premium Menu Entry Refreshed, Visible = false, Text = ")));
    EXPECT_THAT(reports.Events(), IsEmpty());
}

TEST_F(PremiumMenuEntryActionTest, AnotherRightHasNoEffect) {
    for (const int right : {999, 1001, 1, 0}) {
        SetRecord(EnPremiumAccess(right), RecordOf(1));
    }
    const CZRPremiumMenuEntryAction entry(&menu);
    EXPECT_FALSE(entry.isVisible());
}

struct EntryCase {
    const char* name;
    int activationType;
    int linkId;
    const char* text;
    bool visible;
};

void PrintTo(const EntryCase& entry, std::ostream* stream) {
    *stream << entry.name;
}

class PremiumMenuEntryActionVisibleTest : public PremiumMenuEntryActionTest, public WithParamInterface<EntryCase> {};

TEST_P(PremiumMenuEntryActionVisibleTest, EntryHasTheTextAndIsVisibleByTypeLinkAndText) {
    const EntryCase& row = GetParam();
    SetEntry(row.activationType, row.linkId, row.text);

    const CZRPremiumMenuEntryAction entry(&menu);

    EXPECT_EQ(entry.isVisible(), row.visible);
    EXPECT_EQ(entry.text().toStdString(), row.text);
    EXPECT_THAT(reports.Events(), SizeIs(row.visible ? 1 : 0));
}

constexpr EntryCase kEntries[] = {
    {"UnknownState", 0, 301, "Text", false},
    {"LimitedTime", 1, 301, "Text", true},
    {"Frozen", 2, 301, "Text", true},
    {"Full", 3, 301, "Text", true},
    {"EmptyState", 4, 301, "Text", false},
    {"NotActivated", 5, 301, "Text", true},
    {"Ready", 6, 301, "Text", true},
    {"LaterNumber", 7, 301, "Text", true},
    {"NegativeNumber", -1, 301, "Text", true},
    {"NoLink", 1, 0, "Text", false},
    {"NegativeLink", 1, -1, "Text", false},
    {"FirstLink", 1, 1, "Text", true},
    {"NoText", 1, 301, "", false},
    {"BlankText", 1, 301, " ", true},
};

std::string EntryName(const TestParamInfo<EntryCase>& info) {
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(All, PremiumMenuEntryActionVisibleTest, ValuesIn(kEntries), EntryName);

TEST_F(PremiumMenuEntryActionTest, BothAnswersRefreshTheEntryWithAnyParameters) {
    const CZRPremiumMenuEntryAction entry(&menu);
    auto failed = std::make_shared<core::CMessageBody>();
    failed->set_p1(77);
    failed->set_p2(2);

    SetEntry(1, 301, "First");
    EXPECT_FALSE(entry.isVisible());
    bus.HostSend(80050);
    EXPECT_TRUE(entry.isVisible());
    EXPECT_EQ(entry.text().toStdString(), "First");

    SetEntry(1, 301, "Second");
    bus.HostSend(80051, 9, failed);
    EXPECT_EQ(entry.text().toStdString(), "Second");

    SetEntry(4);
    bus.HostSend(80051);
    EXPECT_FALSE(entry.isVisible());
    reports.Forget();
}

/// Notes the messages that are bound.
class CBindings : public IMessageBus {
public:
    explicit CBindings(IMessageBus& bus) : m_bus(bus) {}
    void Bind(unsigned int messageId, core::MessageCallback callback, QObject* context) override {
        bound.emplace_back(messageId, context);
        m_bus.Bind(messageId, std::move(callback), context);
    }
    void Send(const char* location, unsigned int messageId, unsigned long wParam,
              std::shared_ptr<core::CMessageBody> body) override {
        m_bus.Send(location, messageId, wParam, std::move(body));
    }
    void UnBind(QObject* context) override { m_bus.UnBind(context); }

    std::vector<std::pair<unsigned int, QObject*>> bound;

private:
    IMessageBus& m_bus;
};

TEST_F(PremiumMenuEntryActionTest, EntryBindsBothAnswersInTheirOrder) {
    CBindings bindings(bus);
    host::Ports ports = ScriptedPorts();
    ports.bus = &bindings;
    host::Install(ports);
    {
        CZRPremiumMenuEntryAction entry(&menu);
        EXPECT_THAT(bindings.bound, ElementsAre(Pair(80050u, &entry), Pair(80051u, &entry)));
    }
    host::Install(ScriptedPorts());
}

TEST_F(PremiumMenuEntryActionTest, OtherMessagesLeaveTheEntryAsItIs) {
    SetEntry(1);
    const CZRPremiumMenuEntryAction entry(&menu);
    reports.Forget();
    log.Forget();
    SetEntry(4);

    for (const unsigned int message : {80049u, 80052u, 20100u, 20101u}) {
        bus.HostSend(message);
    }
    channel.Forget();  // the texts of the rights

    EXPECT_TRUE(entry.isVisible());
    EXPECT_THAT(EntryLines(), IsEmpty());
}

TEST_F(PremiumMenuEntryActionTest, EntryKeepsItsLookAfterTheLogoutUntilTheNextAnswer) {
    SetEntry(1);
    const CZRPremiumMenuEntryAction entry(&menu);
    reports.Forget();

    CZRPremiumManager::Singleton()->OnLogout();
    EXPECT_TRUE(entry.isVisible());
    EXPECT_EQ(entry.text().toStdString(), "Member page");

    bus.HostSend(80051);
    EXPECT_FALSE(entry.isVisible());
    EXPECT_EQ(entry.text().toStdString(), "");
}

TEST_F(PremiumMenuEntryActionTest, ViewIsReportedAtEachChangeFromHiddenToVisible) {
    SetEntry(1);
    const CZRPremiumMenuEntryAction entry(&menu);
    EXPECT_THAT(reports.Events(), ElementsAre(kView));

    bus.HostSend(80050);
    SetEntry(5, 302, "Other");
    bus.HostSend(80051);
    EXPECT_THAT(reports.Events(), SizeIs(1));

    SetEntry(4);
    bus.HostSend(80050);
    EXPECT_THAT(reports.Events(), SizeIs(1));
    SetEntry(1);
    bus.HostSend(80050);
    EXPECT_THAT(reports.Events(), ElementsAre(kView, kView));
}

TEST_F(PremiumMenuEntryActionTest, EachEntryReportsItsOwnView) {
    const CZRPremiumMenuEntryAction first(&menu);
    SetEntry(1);
    const CZRPremiumMenuEntryAction second(&menu);
    EXPECT_THAT(reports.Events(), SizeIs(1));

    bus.HostSend(80050);

    EXPECT_THAT(reports.Events(), ElementsAre(kView, kView));
}

TEST_F(PremiumMenuEntryActionTest, ViewReportSeesTheEntryVisibleAndPrecedesTheLine) {
    SetEntry(1);
    CZRPremiumMenuEntryAction entry(&menu);
    reports.Forget();
    SetEntry(4);
    entry.RefreshState();
    log.Forget();
    SetEntry(1, 301, "Again");
    bool visible = false;
    std::string text;
    size_t lines = 9;
    WhenReporting([&] {
        visible = entry.isVisible();
        text = entry.text().toStdString();
        lines = EntryLines().size();
    });

    entry.RefreshState();

    EXPECT_TRUE(visible);
    EXPECT_EQ(text, "Again");
    EXPECT_EQ(lines, 0u);
    EXPECT_THAT(reports.Events(), ElementsAre(kView));
}

TEST_F(PremiumMenuEntryActionTest, ReportsHoldTheEngineStatusOfTheUser) {
    UserIs(NewMember());
    SetEntry(1);
    CZRPremiumMenuEntryAction entry(&menu);
    entry.trigger();

    EXPECT_THAT(
        reports.Events(),
        ElementsAre(Field(&ReportedEvent::params, R"({"engine_status":2,"page_id":"2","permission_type":"1000"})"),
                    Field(&ReportedEvent::params, R"({"engine_status":2,"permission_type":"1000"})")));
    urls.Forget();
}

TEST_F(PremiumMenuEntryActionTest, ClickReportsLogsAndOpensThePage) {
    SetEntry(1);
    CZRPremiumMenuEntryAction entry(&menu);
    reports.Forget();
    log.Forget();
    std::vector<size_t> before;
    WhenReporting([&] { before = {links.Asked().size(), log.Lines().size(), urls.Opened().size()}; });

    entry.trigger();

    EXPECT_THAT(before, ElementsAre(0u, 0u, 0u));
    EXPECT_THAT(reports.Events(), ElementsAre(kClick));
    EXPECT_THAT(links.Asked(), ElementsAre(301ul));
    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Premium] Premium Menu Entry Clicked, Open Url = https://www.test/member")));
    ASSERT_THAT(urls.Opened(), SizeIs(1));
    const OpenedUrl& opened = urls.Opened()[0];
    EXPECT_EQ(opened.url, kPage);
    EXPECT_EQ(opened.businessType, 0);
    EXPECT_EQ(opened.context, nullptr);
    EXPECT_FALSE(opened.extra.isValid());
    EXPECT_EQ(opened.fallbackMode, 4);
}

TEST_F(PremiumMenuEntryActionTest, ClickTakesTheLinkOfTheRecordAtThatTime) {
    SetEntry(1);
    CZRPremiumMenuEntryAction entry(&menu);
    for (const int link : {302, 1}) {
        links.Set(static_cast<unsigned long>(link), "https://www.test/other");
        SetEntry(4, link, "");
        urls.Forget();

        entry.trigger();

        EXPECT_THAT(urls.Opened(), ElementsAre(Field(&OpenedUrl::url, "https://www.test/other"))) << link;
    }
    reports.Forget();
}

TEST_F(PremiumMenuEntryActionTest, ClickWithoutALinkIsReportedAndLogged) {
    for (const int linkId : {0, -1}) {
        SetEntry(1, linkId);
        CZRPremiumMenuEntryAction entry(&menu);
        log.Forget();
        reports.Forget();

        // A hidden entry cannot be clicked, but its record may lose the link while the menu is open.
        QMetaObject::invokeMethod(&entry, "OnEntryClicked");

        EXPECT_THAT(reports.Events(), ElementsAre(kClick));
        EXPECT_THAT(log.Lines(),
                    ElementsAre(Error("[Premium] Premium Menu Entry Click Failed, Jump Url Id Is Invalid")));
    }
    EXPECT_THAT(links.Asked(), IsEmpty());
    EXPECT_THAT(urls.Opened(), IsEmpty());
}

TEST_F(PremiumMenuEntryActionTest, EmptyAddressIsDispatchedAllTheSame) {
    links.Set(301, "");
    SetEntry(1);
    CZRPremiumMenuEntryAction entry(&menu);
    log.Forget();

    entry.trigger();

    EXPECT_THAT(EntryLines(), ElementsAre("[Premium] Premium Menu Entry Clicked, Open Url = "));
    EXPECT_THAT(urls.Opened(), ElementsAre(AllOf(Field(&OpenedUrl::url, ""), Field(&OpenedUrl::fallbackMode, 4))));
    reports.Forget();
}

TEST_F(PremiumMenuEntryActionTest, AddressIsReadAsUtf8) {
    links.Set(301, "https://www.test/\xE6\x97\xA5");
    SetEntry(1);
    CZRPremiumMenuEntryAction entry(&menu);

    entry.trigger();

    EXPECT_THAT(urls.Opened(), ElementsAre(Field(&OpenedUrl::url, "https://www.test/\xE6\x97\xA5")));
    EXPECT_THAT(EntryLines(),
                Contains("[Premium] Premium Menu Entry Clicked, Open Url = https://www.test/\xE6\x97\xA5"));
    reports.Forget();
}

TEST_F(PremiumMenuEntryActionTest, ClickInTheMenuOpensThePage) {
    SetEntry(1);
    CZRPremiumMenuEntryAction entry(&menu);
    menu.addAction(&entry);
    menu.popup(QPoint(0, 0));
    time.Settle();
    const QPoint middle = menu.actionGeometry(&entry).center();

    QTest::mouseMove(menu.windowHandle(), middle);
    QTest::mousePress(menu.windowHandle(), Qt::LeftButton, {}, middle);
    QTest::mouseRelease(menu.windowHandle(), Qt::LeftButton, {}, middle);
    time.Settle();

    EXPECT_THAT(urls.Opened(), SizeIs(1));
    EXPECT_THAT(reports.Events(), ElementsAre(kView, kClick));
}

TEST_F(PremiumMenuEntryActionTest, EntryMayBeDeletedByThePageThatItOpens) {
    SetEntry(1);
    const QPointer<CZRPremiumMenuEntryAction> entry = new CZRPremiumMenuEntryAction(&menu);
    urls.WhenOpening([&] { delete entry; });

    entry->trigger();

    EXPECT_FALSE(entry);
    EXPECT_THAT(urls.Opened(), SizeIs(1));
    reports.Forget();
}

TEST_F(PremiumMenuEntryActionTest, EntryLeavesTheBusWithItsMenu) {
    const int before = bus.SubscriptionCount();
    auto* owner = new ZMenu;
    const QPointer<CZRPremiumMenuEntryAction> entry = new CZRPremiumMenuEntryAction(owner);
    EXPECT_EQ(bus.SubscriptionCount(), before + 2);

    delete owner;

    EXPECT_FALSE(entry);
    EXPECT_EQ(bus.SubscriptionCount(), before);
}

TEST_F(PremiumMenuEntryActionTest, EntryNeedsNoMenu) {
    SetEntry(1);
    const CZRPremiumMenuEntryAction entry(nullptr);
    EXPECT_EQ(entry.parent(), nullptr);
    EXPECT_TRUE(entry.isVisible());
    reports.Forget();
}

TEST_F(PremiumMenuEntryActionTest, LongTextIsTakenWhole) {
    const std::string text(10'000, 'W');
    SetEntry(1, 301, text.c_str());
    const CZRPremiumMenuEntryAction entry(&menu);
    EXPECT_EQ(entry.text().toStdString(), text);
    reports.Forget();
}

/// The process has no VIP manager yet.
class PremiumMenuEntryActionFirstTest : public ScriptedHostTest {};

TEST_F(PremiumMenuEntryActionFirstTest, ViewOfTheEntryStartsVipWithoutARequest) {
    CZRPremiumManager::Singleton()->Init();
    CPremiumUIAccessData record = RecordOf(1);
    CZRPremiumManager::Singleton()->SetUIAccessData(EnPremiumAccess_MyPagePremium, record);

    const CZRPremiumMenuEntryAction entry(nullptr);

    EXPECT_TRUE(entry.isVisible());
    EXPECT_THAT(reports.Events(), ElementsAre(Field(&ReportedEvent::params,
                                                    R"({"engine_status":-1,"page_id":"2","permission_type":"1000"})")));
    EXPECT_THAT(channel.Sent(), IsEmpty());
}

}  // namespace
