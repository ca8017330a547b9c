#include <dlfcn.h>

#include <QSignalSpy>

#include "core/message_dispatch.h"
#include "core/message_ids.h"
#include "framework/Ports.h"
#include "support/ScriptedHostTest.h"
#include "ui/ThemeControl.h"
#include "ui/zr_ui_theme.h"

using namespace ::testing;
using zr_ui_theme::Manager;

namespace {

class ThemeManagerTest : public ScriptedHostTest {
protected:
    /// All notifications of the theme in order, each with the theme that getTheme returned then.
    void Listen() {
        QObject::connect(Manager::instance(), &Manager::themeChanged, &context, [this](Manager::Theme theme) {
            told.push_back("signal " + std::to_string(theme) + " at " + std::to_string(Theme()));
        });
        core::__CMessageDispatch("[Test]").Bind(
            core::kMsgThemeChanged,
            [this](unsigned int, unsigned long wParam, const std::shared_ptr<core::CMessageBody>& body) {
                EXPECT_EQ(wParam, 0u);
                EXPECT_EQ(body, nullptr);
                told.push_back("message at " + std::to_string(Theme()));
            },
            &context);
    }

    static int Theme() { return Manager::instance()->getTheme(); }

    std::vector<std::string> told;
    QObject context;
};

}  // namespace

TEST_F(ThemeManagerTest, ThereIsNoManagerUntilSomebodyAsksForIt) {
    EXPECT_EQ(Manager::instancePtr(), nullptr);

    Manager* manager = Manager::instance();

    ASSERT_NE(manager, nullptr);
    EXPECT_EQ(Manager::instancePtr(), manager);
    EXPECT_EQ(Manager::instance(), manager);
}

TEST_F(ThemeManagerTest, ItBeginsInTheDarkBlueTheme) {
    EXPECT_EQ(Theme(), 2);
}

TEST_F(ThemeManagerTest, ThemesAreNumberedFromOneAndTheBlackOneIsThree) {
    static_assert(std::is_same_v<std::underlying_type_t<Manager::Theme>, int>);

    host::CThemeControl::Set(Manager::kThemeBlack);

    EXPECT_TRUE(Manager::instance()->getTheme() == 3);
    host::CThemeControl::Set(Manager::kThemeLight);
    EXPECT_TRUE(Manager::instance()->getTheme() == 1);
}

TEST_F(ThemeManagerTest, ListenersHearOfAThemeThatIsThereAndTheBusAfterThem) {
    Listen();

    host::CThemeControl::Set(Manager::kThemeBlack);

    EXPECT_THAT(told, ElementsAre("signal 3 at 3", "message at 3"));
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(20101)));
}

TEST_F(ThemeManagerTest, TheSameThemeAgainTellsNobody) {
    host::CThemeControl::Set(Manager::kThemeLight);
    bus.Forget();
    Listen();

    host::CThemeControl::Set(Manager::kThemeLight);

    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(bus.Sent(), IsEmpty());
}

TEST_F(ThemeManagerTest, AListenerMayTakeTheNextTheme) {
    Listen();
    QObject::connect(Manager::instance(), &Manager::themeChanged, &context, [](Manager::Theme theme) {
        if (theme == Manager::kThemeLight) {
            host::CThemeControl::Set(Manager::kThemeBlack);
        }
    });

    host::CThemeControl::Set(Manager::kThemeLight);

    // The notification of the replaced theme comes last, when getTheme returns the current one.
    EXPECT_THAT(told, ElementsAre("signal 1 at 1", "signal 3 at 3", "message at 3", "message at 3"));
}

TEST_F(ThemeManagerTest, ANumberThatIsNoThemeChangesNothing) {
    Listen();

    host::CThemeControl::Set(Manager::Theme(0));
    host::CThemeControl::Set(Manager::Theme(4));

    EXPECT_EQ(Theme(), 2);
    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(log.Lines(), ElementsAre(Error("There is no theme 0"), Error("There is no theme 4")));
}

TEST_F(ThemeManagerTest, AQueuedListenerGetsTheThemeAsAValue) {
    std::vector<int> seen;
    QObject::connect(
        Manager::instance(), &Manager::themeChanged, &context, [&seen](Manager::Theme theme) { seen.push_back(theme); },
        Qt::QueuedConnection);

    host::CThemeControl::Set(Manager::kThemeBlack);
    EXPECT_THAT(seen, IsEmpty());
    time.Settle();

    EXPECT_THAT(seen, ElementsAre(3));
}

TEST_F(ThemeManagerTest, TheSignalAndItsTypeAreKnownByName) {
    const QMetaObject* meta = Manager::instance()->metaObject();

    EXPECT_NE(meta->indexOfSignal("themeChanged(zr_ui_theme::Manager::Theme)"), -1);
    EXPECT_NE(QMetaType::type("zr_ui_theme::Manager::Theme"), int(QMetaType::UnknownType));
}

TEST_F(ThemeManagerTest, ItsMetaObjectIsInTheHostLibraryAlone) {
    Dl_info info{};
    ASSERT_NE(dladdr(&Manager::staticMetaObject, &info), 0);

    EXPECT_THAT(std::string(info.dli_fname), EndsWith("/libzrhost.so"));
    EXPECT_EQ(Manager::instance()->metaObject(), &Manager::staticMetaObject);
}

TEST_F(ThemeManagerTest, AfterTheHostsEndOnlyWhoHoldsTheManagerHasIt) {
    Manager* manager = Manager::instance();
    host::CThemeControl::Set(Manager::kThemeBlack);
    QSignalSpy changed(manager, &Manager::themeChanged);

    host::Uninstall();
    host::CThemeControl::Set(Manager::kThemeLight);

    EXPECT_EQ(Manager::instancePtr(), nullptr);
    EXPECT_EQ(Manager::instance(), manager);
    EXPECT_TRUE(manager->getTheme() == 3);
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(ThemeManagerTest, ANewHostFindsTheManagerAgain) {
    Manager* manager = Manager::instance();
    host::Uninstall();

    host::Install({});

    EXPECT_EQ(Manager::instancePtr(), manager);
}
