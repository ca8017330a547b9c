// The page's window: opening, closing, and the messages that lead to it.
#include <fmt/format.h>

#include <QMetaMethod>
#include <thread>

#include "AIChatPageTest.h"
#include "core/message_dispatch.h"
#include "framework/assertion.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

enum class Before {
    kNothing,
    kPreloading,
    kPreloaded,
    kShown,      // scene 4, parameter a=1
    kDismissed,  // the same
    kClosed,     // the same
};

struct Row {
    const char* name;
    Before before;
    int scene;
    std::map<const char*, const char*> params;
    bool change;
    bool show;
    bool preload;
    const char* url;
    uint64_t user;

    const char* loaded;  // null: nothing
    int announcedFrom;   // the previous scene in message 20302; 0: none
    double opacity;      // 0: there is no window
    bool visible;
};

std::ostream& operator<<(std::ostream& stream, const Row& row) {
    return stream << row.name;
}

class AIChatOpenTest : public AIChatPageTest, public WithParamInterface<Row> {
protected:
    void Bring(Before before) {
        if (before == Before::kPreloading || before == Before::kPreloaded) {
            Preload();
        }
        if (before == Before::kPreloaded) {
            PageLoads();
        }
        if (before == Before::kShown || before == Before::kDismissed || before == Before::kClosed) {
            Open({4, {{QStringLiteral("a"), QStringLiteral("1")}}});
            PageLoads();
        }
        if (before == Before::kDismissed) {
            Dismiss();
        }
        if (before == Before::kClosed) {
            ClosePage();
        }
        Forget();
    }

    static Request RequestOf(const Row& row) {
        Request request{row.scene, {}, row.change, row.show, row.preload, row.url};
        for (const auto& [key, value] : row.params) {
            request.params[QString::fromUtf8(key)] = QString::fromUtf8(value);
        }
        return request;
    }

    static std::vector<std::string> ExpectedLines(const Row& row) {
        std::vector<std::string> lines;
        const bool cleared = row.before == Before::kPreloading || row.before == Before::kPreloaded;
        if (cleared) {
            lines.emplace_back("[AIChat] Last load is preload, clear web data");
        }
        if (row.opacity > 0 && (row.before == Before::kNothing || row.before == Before::kClosed)) {
            lines.emplace_back("[AIChat] Create AI chat web dialog");
        }
        if (row.loaded) {
            lines.push_back(
                fmt::format("[AIChat] Load AI chat page start, pageScene = {}, isPreload = {}, "
                            "hiddenButNotClosed = {}, url = {}",
                            row.scene, row.preload, row.before == Before::kDismissed, row.loaded));
        }
        if (row.before == Before::kPreloading) {
            // The preload was stopped. Its end comes later and is no longer that of a preload.
            lines.insert(lines.end(), 2,
                         "[AIChat] Load AI chat page end, httpCode = 0, "
                         "url = https://chat.zrgrowth.example/preload?needChangeSessionId=1&scene=1");
        }
        return lines;
    }
};

const std::map<const char*, const char*> kNoParams;
const std::map<const char*, const char*> kSameParams{{"a", "1"}};
const std::map<const char*, const char*> kOtherParams{{"a", "2"}};
constexpr bool kNo = false;
constexpr bool kYes = true;
constexpr double kGone = 0;
constexpr double kThin = 0.001;
#define PAGE "https://chat.zrgrowth.example/"

// clang-format off
const Row kRows[] = {
    // name, state, scene, parameters, other session, show, preload, url, user | loaded, old scene, opacity, visible
    {"NothingFirstOpen", Before::kNothing, 1, kNoParams, kNo, kYes, kNo, "", kUser, PAGE "?needChangeSessionId=1&scene=1", 0, 1, kYes},
    {"NothingWithoutShowing", Before::kNothing, 4, kNoParams, kYes, kNo, kNo, "", kUser, nullptr, 0, kGone, kNo},
    {"NothingPreload", Before::kNothing, 1, kNoParams, kNo, kYes, kYes, "", kUser, PAGE "preload?needChangeSessionId=1&scene=1", 0, kThin, kNo},
    {"NothingPreloadWithAUrl", Before::kNothing, 1, kNoParams, kNo, kYes, kYes, PAGE "x", kUser, PAGE "x?needChangeSessionId=1&scene=1", 0, kThin, kNo},
    {"NothingNobodyLoggedInSameScene", Before::kNothing, 1, kNoParams, kYes, kYes, kNo, "", 0, PAGE "?needChangeSessionId=0&scene=1", 0, 1, kYes},
    {"NothingNobodyLoggedInOtherScene", Before::kNothing, 4, kNoParams, kYes, kYes, kNo, "", 0, PAGE "?needChangeSessionId=1&scene=4", 1, 1, kYes},
    {"NothingUrlWithAQuery", Before::kNothing, 1, kNoParams, kNo, kYes, kNo, PAGE "x?y=1", kUser, PAGE "x?y=1?needChangeSessionId=1&scene=1", 0, 1, kYes},
    {"NothingParametersInTheirOrder", Before::kNothing, 12, {{"b", "%26"}, {"a", "1"}, {"c", ""}, {"", "d"}}, kNo, kYes, kNo, "", kUser, PAGE "?needChangeSessionId=1&scene=12&a=1&b=%26", 1, 1, kYes},

    {"PreloadingSamePage", Before::kPreloading, 1, kNoParams, kYes, kYes, kNo, "", kUser, PAGE "?needChangeSessionId=0&scene=1", 0, 1, kYes},
    {"PreloadingOtherScene", Before::kPreloading, 42, kNoParams, kYes, kYes, kNo, "", kUser, PAGE "?needChangeSessionId=1&scene=42", 1, 1, kYes},
    {"PreloadedSamePage", Before::kPreloaded, 1, kNoParams, kNo, kYes, kNo, "", kUser, PAGE "?needChangeSessionId=0&scene=1", 0, 1, kYes},
    {"PreloadedOtherParameters", Before::kPreloaded, 1, kOtherParams, kYes, kYes, kNo, "", kUser, PAGE "?needChangeSessionId=1&scene=1&a=2", 0, 1, kYes},
    {"PreloadedWithoutShowing", Before::kPreloaded, 1, kNoParams, kNo, kNo, kNo, "", kUser, PAGE "?needChangeSessionId=0&scene=1", 0, kThin, kNo},
    {"PreloadedPreloadAgain", Before::kPreloaded, 1, kNoParams, kNo, kYes, kYes, "", kUser, PAGE "preload?needChangeSessionId=0&scene=1", 0, kThin, kNo},
    {"PreloadedOtherUser", Before::kPreloaded, 1, kNoParams, kNo, kYes, kNo, "", 777, PAGE "?needChangeSessionId=1&scene=1", 0, 1, kYes},

    {"ShownSamePage", Before::kShown, 4, kSameParams, kNo, kYes, kNo, "", kUser, nullptr, 0, 1, kYes},
    {"ShownSamePageOtherSession", Before::kShown, 4, kSameParams, kYes, kYes, kNo, "", kUser, nullptr, 0, 1, kYes},
    {"ShownSamePageOtherUser", Before::kShown, 4, kSameParams, kNo, kYes, kNo, "", 777, nullptr, 0, 1, kYes},
    {"ShownSamePageWithoutShowing", Before::kShown, 4, kSameParams, kNo, kNo, kNo, "", kUser, nullptr, 0, 1, kYes},
    {"ShownPairWithoutAValue", Before::kShown, 4, {{"a", "1"}, {"b", ""}}, kYes, kYes, kNo, "", kUser, nullptr, 0, 1, kYes},
    {"ShownUrl", Before::kShown, 4, kSameParams, kYes, kYes, kNo, PAGE "x", kUser, PAGE "x?needChangeSessionId=0&scene=4&a=1", 0, 1, kYes},
    {"ShownOtherParameters", Before::kShown, 4, kOtherParams, kNo, kYes, kNo, "", kUser, PAGE "?needChangeSessionId=0&scene=4&a=2", 0, 1, kYes},
    {"ShownOtherParametersOtherSession", Before::kShown, 4, kOtherParams, kYes, kYes, kNo, "", kUser, PAGE "?needChangeSessionId=1&scene=4&a=2", 0, 1, kYes},
    {"ShownOtherParametersOtherUser", Before::kShown, 4, kOtherParams, kNo, kYes, kNo, "", 777, PAGE "?needChangeSessionId=1&scene=4&a=2", 0, 1, kYes},
    {"ShownOtherParametersWithoutShowing", Before::kShown, 4, kOtherParams, kNo, kNo, kNo, "", kUser, PAGE "?needChangeSessionId=0&scene=4&a=2", 0, 1, kYes},
    {"ShownOtherScene", Before::kShown, 12, kSameParams, kNo, kYes, kNo, "", kUser, PAGE "?needChangeSessionId=0&scene=12&a=1", 4, 1, kYes},
    {"ShownOtherSceneOtherSession", Before::kShown, 12, kSameParams, kYes, kYes, kNo, "", kUser, PAGE "?needChangeSessionId=1&scene=12&a=1", 4, 1, kYes},
    {"ShownPreloadOfTheSamePage", Before::kShown, 4, kSameParams, kNo, kYes, kYes, "", kUser, nullptr, 0, kThin, kYes},
    {"ShownPreload", Before::kShown, 1, kNoParams, kNo, kYes, kYes, "", kUser, PAGE "preload?needChangeSessionId=0&scene=1", 4, kThin, kYes},

    {"DismissedSamePage", Before::kDismissed, 4, kSameParams, kYes, kYes, kNo, "", kUser, PAGE "?needChangeSessionId=0&scene=4&a=1", 0, 1, kYes},
    {"DismissedSamePageOtherUser", Before::kDismissed, 4, kSameParams, kNo, kYes, kNo, "", 777, PAGE "?needChangeSessionId=1&scene=4&a=1", 0, 1, kYes},
    {"DismissedSamePageWithoutShowing", Before::kDismissed, 4, kSameParams, kNo, kNo, kNo, "", kUser, PAGE "?needChangeSessionId=0&scene=4&a=1", 0, kThin, kNo},
    {"DismissedOtherScene", Before::kDismissed, 5, kSameParams, kYes, kYes, kNo, "", kUser, PAGE "?needChangeSessionId=1&scene=5&a=1", 4, 1, kYes},

    {"ClosedSamePage", Before::kClosed, 4, kSameParams, kYes, kYes, kNo, "", kUser, PAGE "?needChangeSessionId=0&scene=4&a=1", 0, 1, kYes},
    {"ClosedWithoutShowing", Before::kClosed, 5, kSameParams, kYes, kNo, kNo, "", kUser, nullptr, 0, kGone, kNo},
    {"ClosedOtherScene", Before::kClosed, 1, kNoParams, kNo, kYes, kNo, "", kUser, PAGE "?needChangeSessionId=0&scene=1", 4, 1, kYes},
};
// clang-format on

TEST_P(AIChatOpenTest, PageIsLoadedAnnouncedAndShownByTheTable) {
    const Row& row = GetParam();
    Bring(row.before);
    account.Set(row.user);

    Open(RequestOf(row));

    EXPECT_EQ(Texts(), ExpectedLines(row));
    EXPECT_EQ(web.Loads(), row.loaded ? std::vector<std::string>{row.loaded} : std::vector<std::string>{});
    if (row.announcedFrom > 0) {
        EXPECT_THAT(bus.Sent(), ElementsAre(::Message(20302, uint64_t(row.announcedFrom), uint64_t(row.scene))));
    } else {
        EXPECT_THAT(bus.Sent(), IsEmpty());
    }
    EXPECT_THAT(reports.Events(), SizeIs(row.preload ? 0 : 1));
    ASSERT_EQ(Dialog() != nullptr, row.opacity > 0);
    if (Dialog()) {
        EXPECT_EQ(Dialog()->exactWindowOpacity(), row.opacity);
        EXPECT_EQ(!Dialog()->isHidden(), row.visible);
    }
}

INSTANTIATE_TEST_SUITE_P(States, AIChatOpenTest, ValuesIn(kRows), [](const auto& row) { return row.param.name; });

class AIChatManagerPageTest : public AIChatPageTest {};

// Opening, one after the other

TEST_F(AIChatManagerPageTest, OpenOnlyShowsWhenADismissedPageWasReloadedWithoutShowing) {
    Open({});
    PageLoads();
    Dismiss();
    Request unshown;
    unshown.show = false;
    Open(unshown);
    PageLoads();
    Forget();

    Open({});

    EXPECT_THAT(Texts(), IsEmpty());
    EXPECT_FALSE(Dialog()->isHidden());
    reports.Forget();
}

TEST_F(AIChatManagerPageTest, OpenLoadsWithoutAnnouncingWhenAnUnshownOneStoppedEarly) {
    Request unshown;
    unshown.scene = 12;
    unshown.params = {{QStringLiteral("a"), QStringLiteral("1")}};
    unshown.show = false;
    Open(unshown);
    account.Set(0);

    // The stopped call changed neither scene nor parameters nor user.
    Request same;
    same.change = true;
    Open(same);

    EXPECT_THAT(web.Loads(), ElementsAre("https://chat.zrgrowth.example/?needChangeSessionId=0&scene=1"));
    EXPECT_THAT(bus.Sent(), IsEmpty());
    reports.Forget();
}

TEST_F(AIChatManagerPageTest, PreloadFlagIsClearedWhenAnOpenStopsEarly) {
    Preload();
    ClosePage();
    Request unshown;
    unshown.show = false;
    Open(unshown);
    Open({});
    Forget();

    Open({});

    EXPECT_THAT(Texts(), IsEmpty());
    reports.Forget();
}

TEST_F(AIChatManagerPageTest, PreloadFlagIsSetWhenAPreloadLoadsNothing) {
    Open({});
    PageLoads();
    Preload();
    EXPECT_THAT(web.Loads(), SizeIs(1));
    Forget();

    Open({});

    EXPECT_THAT(Texts(), ElementsAre("[AIChat] Last load is preload, clear web data",
                                     "[AIChat] Load AI chat page start, pageScene = 1, isPreload = false, "
                                     "hiddenButNotClosed = false, url = "
                                     "https://chat.zrgrowth.example/?needChangeSessionId=0&scene=1"));
    Forget();
}

TEST_F(AIChatManagerPageTest, AddressOfASchemeStaysWhenTheSameSceneIsOpened) {
    Request scheme;
    scheme.url = "https://chat.zrgrowth.example/sources";
    Open(scheme);
    Forget();

    Open({});

    EXPECT_THAT(web.Loads(), IsEmpty());
    reports.Forget();
}

TEST_F(AIChatManagerPageTest, SceneChangeIsAnnouncedBeforeThePageIsLoaded) {
    Open({});
    Forget();
    QObject listener;
    size_t loadsWhenTold = 99;
    core::__CMessageDispatch("[Test]").Bind(
        20302,
        [&](unsigned int, unsigned long, const std::shared_ptr<core::CMessageBody>&) {
            loadsWhenTold = web.Loads().size();
        },
        &listener);

    Open({4});

    EXPECT_EQ(loadsWhenTold, 0u);
    EXPECT_THAT(web.Loads(), SizeIs(1));
    reports.Forget();
}

TEST_F(AIChatManagerPageTest, NothingIsLoadedWhenAListenerOfTheSceneClosesThePage) {
    Open({});
    Forget();
    QObject listener;
    core::__CMessageDispatch("[Test]").Bind(
        20302,
        [&](unsigned int, unsigned long, const std::shared_ptr<core::CMessageBody>&) { manager.CloseAIChatPage(); },
        &listener);

    Open({4});

    EXPECT_FALSE(Dialog());
    EXPECT_THAT(web.Loads(), IsEmpty());
    reports.Forget();
}

TEST_F(AIChatManagerPageTest, ParametersAreNotEscapedWhenTheyGoIntoTheAddress) {
    Open({1, {{QStringLiteral("k y"), QString::fromUtf8("ü&x=1#")}}});

    EXPECT_THAT(Texts(), Contains(EndsWith("url = https://chat.zrgrowth.example/"
                                           "?needChangeSessionId=1&scene=1&k y=ü&x=1#")));
    Forget();
}

TEST_F(AIChatManagerPageTest, WindowIsDeletedOnCloseAndHasNoParentWhenCreated) {
    Open({});

    EXPECT_TRUE(Dialog()->testAttribute(Qt::WA_DeleteOnClose));
    EXPECT_FALSE(Dialog()->parent());
    Forget();
}

// Threads and posts

TEST_F(AIChatManagerPageTest, ReportIsMadeAtOnceAndTheRestLaterWhenOpened) {
    poster.Forget();

    manager.OpenAIChatPage(ZRAIChatPageScene(1), {}, false, true, false, QString());

    EXPECT_THAT(reports.Names(), ElementsAre("ClickAIChatEntrance"));
    EXPECT_THAT(poster.Delays(), ElementsAre(0));
    EXPECT_FALSE(Dialog());
    time.Settle();
    EXPECT_TRUE(Dialog());
    web.Forget();
}

TEST_F(AIChatManagerPageTest, ReportIsMadeOnTheCallingThreadWhenThatIsAnother) {
    size_t reported = 0;
    std::thread([&] {
        manager.OpenAIChatPage(ZRAIChatPageScene(4), {}, false, true, false, QString());
        reported = reports.Events().size();
    }).join();

    EXPECT_EQ(reported, 1u);
    EXPECT_FALSE(Dialog());
    time.Settle();
    EXPECT_THAT(web.Loads(), ElementsAre("https://chat.zrgrowth.example/?needChangeSessionId=1&scene=4"));
}

TEST_F(AIChatManagerPageTest, CallsAreServedInTheirOrderWhenSeveralWait) {
    manager.OpenAIChatPage(ZRAIChatPageScene(4), {}, false, true, false, QString());
    manager.OpenAIChatPage(ZRAIChatPageScene(5), {}, false, true, false, QString());
    time.Settle();

    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(20302, 1, 4), ::Message(20302, 4, 5)));
    Forget();
}

TEST_F(AIChatManagerPageTest, NothingIsOpenedWhenTheManagerIsGone) {
    auto shortLived = std::make_unique<CZRAIChatManager>();
    shortLived->OpenAIChatPage(ZRAIChatPageScene(1), {}, false, true, false, QString());
    shortLived.reset();

    time.Settle();

    EXPECT_FALSE(Dialog());
    reports.Forget();
}

// The report

TEST_F(AIChatManagerPageTest, ReportNamesTheEntranceWhenTheSceneIsKnown) {
    const std::pair<int, const char*> rows[] = {{1, "3"}, {4, "4"}, {5, "5"}, {12, "12"}, {42, "42"}};
    for (const auto& [scene, source] : rows) {
        reports.Forget();
        Request unshown;
        unshown.scene = scene;
        unshown.show = false;
        Open(unshown);

        ASSERT_THAT(reports.Events(), SizeIs(1)) << scene;
        const ReportedEvent expected{"ClickAIChatEntrance", 5, std::string(R"({"entrance_source":")") + source + "\"}",
                                     0, false};
        EXPECT_EQ(reports.Events()[0], expected);
    }
}

TEST_F(AIChatManagerPageTest, UnknownSceneIsAssertedAndOpenedWithoutAReportWhenItIsNoPreload) {
    Open({3});

    EXPECT_THAT(log.Assertions(), ElementsAre(FieldsAre(FrameWork::kAssetDefensive, "", "ZRGrowth", _, _, "false")));
    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_THAT(web.Loads(), ElementsAre("https://chat.zrgrowth.example/?needChangeSessionId=1&scene=3"));
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(20302, 1, 3)));
}

TEST_F(AIChatManagerPageTest, UnknownSceneIsNotAssertedWhenItIsPreloaded) {
    Request request;
    request.scene = 3;
    request.preload = true;
    Open(request);

    EXPECT_THAT(log.Assertions(), IsEmpty());
    web.Forget();
}

// The preload

TEST_F(AIChatManagerPageTest, LoginPreloadsLastWhenItHasAsked) {
    manager.OnLogin();
    ASSERT_THAT(channel.Sent(), SizeIs(1));
    EXPECT_THAT(Texts(), ElementsAre("[AIChat] OnLogin, preload AI chat web page", "[AIChat] Read cache failed"));
    EXPECT_FALSE(Dialog());

    time.Settle();

    EXPECT_THAT(web.Loads(), ElementsAre("https://chat.zrgrowth.example/preload?needChangeSessionId=1&scene=1"));
    EXPECT_TRUE(Dialog()->isHidden());
    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_THAT(bus.Sent(), IsEmpty());
}

TEST_F(AIChatManagerPageTest, LoginKeepsTheSessionWhenTheUserIsTheSame) {
    Open({4});
    PageLoads();
    manager.OnLogout();
    time.Settle();
    Forget();

    manager.OnLogin();
    time.Settle();

    EXPECT_THAT(web.Loads(), ElementsAre("https://chat.zrgrowth.example/preload?needChangeSessionId=0&scene=1"));
    Forget();
}

TEST_F(AIChatManagerPageTest, PreloadedPageIsEmptiedInSilenceWhenItsLoadEnds) {
    Preload();
    Forget();

    web.View().Fail();
    time.Settle();

    EXPECT_THAT(Texts(), Contains("[AIChat] Hide web page, clear web data").Times(1));
    EXPECT_THAT(web.View().Scripts(), ElementsAre("document.body.innerHTML='';"));
    EXPECT_THAT(bus.Sent(), IsEmpty());
    log.Forget();
}

TEST_F(AIChatManagerPageTest, ShownPageStaysWhenItsLoadEnds) {
    Open({});
    log.Forget();

    PageLoads();

    EXPECT_THAT(Texts(), Not(Contains("[AIChat] Hide web page, clear web data")));
    EXPECT_FALSE(Dialog()->isHidden());
    EXPECT_EQ(Dialog()->exactWindowOpacity(), 1);
    Forget();
}

TEST_F(AIChatManagerPageTest, PageIsEmptiedWhenItIsOpenedAfterAPreload) {
    Preload();
    PageLoads();
    const size_t scripts = web.View().Scripts().size();

    Open({});

    EXPECT_EQ(web.View().Scripts().size(), scripts + 1);
    EXPECT_EQ(web.MadeCount(), 1);
    Forget();
}

TEST_F(AIChatManagerPageTest, WindowIsHiddenAgainWhenItIsOpenedRightAfterADismissal) {
    Open({});
    PageLoads();
    Dialog()->close();
    time.Advance(99ms);
    Open({});
    EXPECT_FALSE(Dialog()->isHidden());

    time.Advance(1ms);

    EXPECT_TRUE(Dialog()->isHidden());
    Forget();
}

// Dismissal and closing

TEST_F(AIChatManagerPageTest, DismissalIsSentWithoutABodyWhenTheWindowIsClosed) {
    Open({});
    Forget();

    Dismiss();

    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(20301)));
    EXPECT_TRUE(Dialog()->isHidden());
}

TEST_F(AIChatManagerPageTest, DismissalIsKnownWhenItIsSent) {
    Open({});
    Forget();
    QObject listener;
    core::__CMessageDispatch("[Test]").Bind(
        20301,
        [&](unsigned int, unsigned long, const std::shared_ptr<core::CMessageBody>&) {
            manager.OpenAIChatPage(ZRAIChatPageScene(1), {}, false, true, false, QString());
        },
        &listener);

    Dialog()->close();
    time.Settle();

    EXPECT_THAT(Texts(), Contains(HasSubstr("hiddenButNotClosed = true")));
    Forget();
}

TEST_F(AIChatManagerPageTest, WindowIsHiddenAndDeletedLaterInSilenceWhenTheUserLogsOut) {
    Open({});
    Forget();
    const QPointer<CZRAIChatWebDialog> dialog = Dialog();

    manager.OnLogout();
    ASSERT_TRUE(dialog);
    EXPECT_TRUE(dialog->isHidden());

    time.Settle();
    EXPECT_FALSE(dialog);
    EXPECT_THAT(bus.Sent(), IsEmpty());
    EXPECT_THAT(Texts(), IsEmpty());
}

TEST_F(AIChatManagerPageTest, WindowIsCreatedAfterALogoutWhenTheLoginWasJustBefore) {
    manager.OnLogin();
    manager.OnLogout();

    time.Settle();

    EXPECT_TRUE(Dialog());
    Forget();
}

TEST_F(AIChatManagerPageTest, NewWindowIsCreatedWhenTheOldOneStillWaitsForItsEnd) {
    Open({});
    const QPointer<CZRAIChatWebDialog> old = Dialog();
    Forget();

    manager.CloseAIChatPage();
    manager.OpenAIChatPage(ZRAIChatPageScene(1), {}, false, true, false, QString());
    time.Settle();

    EXPECT_THAT(Texts(), Contains("[AIChat] Create AI chat web dialog"));
    EXPECT_THAT(web.Loads(), SizeIs(1));
    EXPECT_FALSE(old);
    ASSERT_TRUE(Dialog());
    reports.Forget();
}

TEST_F(AIChatManagerPageTest, PageIsLoadedWhenTheWindowWasDeletedBySomebodyElse) {
    Open({});
    Forget();
    delete Dialog();

    Open({});

    EXPECT_THAT(web.Loads(), SizeIs(1));
    reports.Forget();
}

// Messages of the host

TEST_F(AIChatManagerPageTest, LanguageClosesTheWindowWhetherItIsVisibleOrNot) {
    for (const bool visible : {true, false}) {
        Request request;
        request.preload = !visible;
        Open(request);
        ASSERT_EQ(!Dialog()->isHidden(), visible);

        bus.HostSend(20100);
        time.Settle();

        EXPECT_FALSE(Dialog()) << visible;
    }
    Forget();
}

TEST_F(AIChatManagerPageTest, ThemeClosesTheWindowOnlyWhenItIsHidden) {
    Open({});
    PageLoads();
    bus.HostSend(20101);
    time.Settle();
    ASSERT_TRUE(Dialog());

    Dismiss();
    bus.HostSend(20101);
    time.Settle();
    EXPECT_FALSE(Dialog());

    Preload();
    bus.HostSend(20101);
    time.Settle();
    EXPECT_FALSE(Dialog());
    bus.HostSend(20101);
    Forget();
}

class COpenManager : public CZRAIChatManager {
public:
    using CZRAIChatManager::OnCommonConfigChanged;
    using CZRAIChatManager::OnLanguageChanged;
    using CZRAIChatManager::OnLoadEnd;
    using CZRAIChatManager::OnThemeChanged;
};

TEST_F(AIChatManagerPageTest, SlotOfAMessageDoesNothingWhenTheMessageIsAnother) {
    COpenManager other;
    other.OpenAIChatPage(ZRAIChatPageScene(1), {}, false, true, true, QString());
    time.Settle();
    Forget();

    other.OnLanguageChanged(20101, 0, nullptr);
    other.OnThemeChanged(20100, 0, nullptr);
    other.OnCommonConfigChanged(20100, 0, nullptr);
    time.Settle();

    EXPECT_TRUE(Dialog());
    EXPECT_THAT(Texts(), IsEmpty());
    other.CloseAIChatPage();
    time.Settle();
}

TEST_F(AIChatManagerPageTest, EndOfAPreloadDoesNothingWhenTheWindowIsGone) {
    COpenManager other;
    other.OpenAIChatPage(ZRAIChatPageScene(1), {}, false, true, true, QString());
    time.Settle();
    other.CloseAIChatPage();
    time.Settle();
    Forget();

    other.OnLoadEnd();

    EXPECT_FALSE(Dialog());
    EXPECT_THAT(Texts(), IsEmpty());
}

TEST_F(AIChatManagerPageTest, MessagesReachNobodyWhenTheManagerHasEnded) {
    Preload();
    Forget();
    manager.UnInit();

    bus.HostSend(20100);
    bus.HostSend(20101);
    bus.HostSend(10250);
    time.Settle();

    EXPECT_TRUE(Dialog());
    EXPECT_THAT(Texts(), IsEmpty());
}

// The addresses

struct Config {
    const char* name;
    Json::Value value;
    const char* page;     // null: the built-in one
    const char* preload;  // the same
};

Json::Value Object(const Json::Value& page, const Json::Value& preload) {
    Json::Value value(Json::objectValue);
    value["url_string"] = page;
    value["preload_url_string"] = preload;
    return value;
}

class AIChatAddressTest : public AIChatPageTest, public WithParamInterface<Config> {};

TEST_P(AIChatAddressTest, AddressesComeFromTheConfigurationOrAreBuiltInByTheTable) {
    const Config& row = GetParam();
    config.Set("ai_chat", row.value);
    const std::string page = row.page ? row.page : kPage;
    const std::string preload = row.preload ? row.preload : kPreloadPage;

    bus.HostSend(10250);

    EXPECT_THAT(Texts(), ElementsAre(std::string("[AIChat] Get AI chat url from ") +
                                         (row.page ? "common config" : "local") + ", url = " + page,
                                     std::string("[AIChat] Get AI chat preload url from ") +
                                         (row.preload ? "common config" : "local") + ", url = " + preload));
    Preload();
    Open({});
    EXPECT_THAT(Texts(), IsSupersetOf({EndsWith("url = " + preload + "?needChangeSessionId=1&scene=1"),
                                       EndsWith("url = " + page + "?needChangeSessionId=0&scene=1")}));
    Forget();
}

INSTANTIATE_TEST_SUITE_P(
    Configurations, AIChatAddressTest,
    Values(Config{"Both", Object("https://a.test/", "https://b.test/"), "https://a.test/", "https://b.test/"},
           Config{"PageAlone", Object("https://a.test/", Json::Value()), "https://a.test/", nullptr},
           Config{"PreloadAlone", Object(7, "https://b.test/"), nullptr, "https://b.test/"},
           Config{"EmptyTexts", Object("", ""), nullptr, nullptr}, Config{"OneCharacter", Object("x", "y"), "x", "y"},
           Config{"Array", Json::Value(Json::arrayValue), nullptr, nullptr},
           Config{"Text", Json::Value("https://a.test/"), nullptr, nullptr},
           Config{"Null", Json::Value(), nullptr, nullptr}, Config{"EmptyObject", Json::objectValue, nullptr, nullptr}),
    [](const auto& row) { return row.param.name; });

TEST_F(AIChatManagerPageTest, BuiltInAddressesReplaceTheConfiguredOnesWhenTheConfigurationEnds) {
    config.Set("ai_chat", Object("https://a.test/", "https://b.test/"));
    bus.HostSend(10250);
    config.Set("ai_chat", Json::Value());
    bus.HostSend(10250);
    Forget();

    Open({});

    EXPECT_THAT(web.Loads(), ElementsAre("https://chat.zrgrowth.example/?needChangeSessionId=1&scene=1"));
    reports.Forget();
}

TEST_F(AIChatManagerPageTest, LoadedPageStaysWhenTheConfigurationChanges) {
    Open({});
    Forget();
    config.Set("ai_chat", Object("https://a.test/", "https://b.test/"));

    bus.HostSend(10250);
    time.Settle();

    EXPECT_THAT(web.Loads(), IsEmpty());
    EXPECT_FALSE(Dialog()->isHidden());
}

TEST_F(AIChatManagerPageTest, SlotsAreDeclaredInTheirOrder) {
    const QMetaObject& meta = CZRAIChatManager::staticMetaObject;
    std::vector<std::string> names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        names.push_back(meta.method(i).name().toStdString());
        EXPECT_EQ(meta.method(i).methodType(), QMetaMethod::Slot);
        EXPECT_EQ(meta.method(i).access(), QMetaMethod::Protected);
    }
    EXPECT_THAT(names, ElementsAre("OnLanguageChanged", "OnThemeChanged", "OnCommonConfigChanged",
                                   "OnRequestAIChatEnableStatusCallback", "OnHandleScheme",
                                   "OnWebDialogHiddenButNotClosed", "OnLoadEnd"));
}

}  // namespace
