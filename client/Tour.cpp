#include "Tour.h"

#include <fmt/format.h>
#include <signal.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QLineEdit>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QTimer>
#include <memory>
#include <optional>

#include "Composition.h"
#include "EntryScenes.h"
#include "MainWindow.h"
#include "StatusLine.h"
#include "Theme.h"
#include "Translation.h"
#include "core/lang.h"
#include "core/message_dispatch.h"
#include "core/message_ids.h"
#include "framework/JsonText.h"
#include "ui/zr_ui_theme.h"
#include "workbench/LogFilter.h"
#include "workbench/LogModel.h"
#include "workbench/Workbench.h"

namespace {

constexpr int kLookEveryMs = 20;
constexpr qint64 kStepLimitMs = 20'000;
constexpr qint64 kTourLimitMs = 90'000;

QString Words(const std::set<int>& scenes) {
    QStringList words;
    for (const int scene : scenes) {
        words << QString::number(scene);
    }
    return words.isEmpty() ? QStringLiteral("none") : words.join(QLatin1Char(' '));
}

std::set<int> OpenPages(const Json::Value& user) {
    std::set<int> open;
    if (!user.isMember("aiChat") || !user["aiChat"].isMember("entries")) {
        return open;
    }
    for (const Json::Value& entry : user["aiChat"]["entries"]) {
        for (const EntryPage& page : kEntryPages) {
            if (entry["allOpen"].asBool() && entry["scene"].asUInt() == unsigned(page.scene)) {
                open.insert(int(page.scene));
            }
        }
    }
    return open;
}

}  // namespace

CTour::CTour(CComposition& composition, CMainWindow& window, const QString& folder)
    : m_composition(composition), m_window(window), m_strFolder(folder) {
    const auto count = [this](unsigned int messageId, int& counter) {
        core::__CMessageDispatch("[Client]")
            .Bind(
                messageId,
                [&counter](unsigned int, unsigned long, const std::shared_ptr<core::CMessageBody>&) { ++counter; },
                this);
    };
    count(kMsgAIChatEntriesChanged, m_nEntryAnswers);
    count(core::kMsgLoginChannelConnected, m_nChannelAnswers);
    count(core::kMsgThemeChanged, m_nThemeMessages);
}

int CTour::Run() {
    using Step = bool (CTour::*)();
    constexpr Step kSteps[] = {
        &CTour::SeeConnected,    &CTour::SeeAds,    &CTour::SeeOtherUser,    &CTour::SeeUserWithNone,
        &CTour::SeeChinese,      &CTour::SeeThemes, &CTour::SeeForcedOpen,   &CTour::SeeTraffic,
        &CTour::SeeScenesEdited, &CTour::SeeMember, &CTour::SeePushedRights, &CTour::SeeFault,
        &CTour::SeeLinks,        &CTour::SeeExport, &CTour::SeeServerLost,   &CTour::SeeReconnected,
        &CTour::SeeLogFiltered,
    };
    m_clock.start();
    int good = 0;
    for (const Step step : kSteps) {
        ++m_nStep;
        m_strFailure.clear();
        if ((this->*step)()) {
            ++good;
        } else {
            fmt::print("{}. FAILED: {}\n", m_nStep, m_strFailure.toStdString());
            fflush(stdout);
        }
    }
    fmt::print("Tour: {} steps, {} as expected\n", m_nStep, good);
    fflush(stdout);
    return good == m_nStep ? 0 : 1;
}

bool CTour::SeeConnected() {
    if (!WaitFor(QStringLiteral("a connection and a login"),
                 [this] { return m_window.StatusLine().IsGood() && m_composition.UserId() != 0; }) ||
        !ReadScenario() ||
        !WaitFor(QStringLiteral("the module's first answer"), [this] { return m_nEntryAnswers > 0; }) ||
        !WaitForEntries(m_composition.UserId())) {
        return false;
    }
    m_nFirstUser = m_composition.UserId();
    Tell(QStringLiteral("connected; user %1: entries open: %2").arg(m_composition.UserId()).arg(Words(OpenScenes())));
    return TakePicture("connected");
}

bool CTour::SeeOtherUser() {
    const Scenes before = OpenScenes();
    for (const auto& [userId, scenes] : m_expected) {
        if (scenes.empty() || scenes == before) {
            continue;
        }
        if (!LogIn(userId)) {
            return false;
        }
        const int scene = *scenes.begin();
        OpenPage(scene);
        Find<QAbstractButton>(QStringLiteral("AIChatEntry%1").arg(scene))->click();
        Tell(QStringLiteral("user %1: entries open: %2").arg(userId).arg(Words(OpenScenes())));
        return TakePicture("other-user");
    }
    return Fail(QStringLiteral("the scenario has no user with other entries"));
}

bool CTour::SeeUserWithNone() {
    for (const auto& [userId, scenes] : m_expected) {
        if (!scenes.empty()) {
            continue;
        }
        if (!LogIn(userId)) {
            return false;
        }
        OpenPage(4);
        Tell(QStringLiteral("user %1: entries open: %2").arg(userId).arg(Words(OpenScenes())));
        return TakePicture("no-entries");
    }
    return Fail(QStringLiteral("the scenario has no user without entries"));
}

bool CTour::SeeChinese() {
    auto* tab = Find<QAbstractButton>(QStringLiteral("NavigationTab_watchlist"));
    const QString before = tab->text();
    const QVariant language = Find<QComboBox>(QStringLiteral("WorkbenchLanguage"))->currentData();
    Choose("WorkbenchLanguage", int(core::lang::kLanguageSimplifiedChinese));
    OpenPage(3);
    if (!WaitFor(QStringLiteral("Chinese texts"), [tab, before] {
            return tab->text() != before && tab->text().trimmed() == translation::PageText("Watchlist");
        })) {
        return false;
    }
    Tell(QStringLiteral("simplified Chinese: the first tab says %1").arg(tab->text().trimmed()));
    const bool taken = TakePicture("chinese");
    Choose("WorkbenchLanguage", language);
    return taken && WaitFor(QStringLiteral("the former texts"), [tab, before] { return tab->text() == before; });
}

bool CTour::SeeThemes() {
    const QVariant before = Find<QComboBox>(QStringLiteral("WorkbenchTheme"))->currentData();
    constexpr std::pair<zr_ui_theme::Manager::Theme, const char*> kLooks[] = {
        {zr_ui_theme::Manager::kThemeLight, "theme-light"},
        {zr_ui_theme::Manager::kThemeDarkBlue, "theme-dark-blue"},
        {zr_ui_theme::Manager::kThemeBlack, "theme-black"},
    };
    OpenPage(2);
    QStringList seen;
    for (const auto& [number, picture] : kLooks) {
        const bool changes = zr_ui_theme::Manager::instance()->getTheme() != number;
        m_nThemeMessages = 0;
        Choose("WorkbenchTheme", int(number));
        if (m_nThemeMessages != (changes ? 1 : 0)) {
            return Fail(QStringLiteral("theme %1 was told %2 times").arg(number).arg(m_nThemeMessages));
        }
        if (!WaitFor(QStringLiteral("the window in theme %1").arg(number), [this] { return WearsTheme(); }) ||
            !TakePicture(picture)) {
            return false;
        }
        seen << QStringLiteral("%1 on %2").arg(number).arg(QColor(theme::kWindow).name());
    }
    Choose("WorkbenchTheme", before);
    Tell(QStringLiteral("themes: %1").arg(seen.join(QStringLiteral(", "))));
    return true;
}

// At its lower edge a page shows nothing but the window's colour.
bool CTour::WearsTheme() const {
    const QImage picture = Find<QWidget>(QStringLiteral("Content"))->grab().toImage();
    return picture.pixelColor(picture.width() - 4, picture.height() - 4) == QColor(theme::kWindow);
}

bool CTour::SeeForcedOpen() {
    OpenPage(2);
    Choose("WorkbenchOverride", int(EnEntryOverride::Open));
    if (!WaitFor(QStringLiteral("all entries open"), [this] { return OpenScenes().size() == kEntryPages.size(); })) {
        return false;
    }
    Find<QAbstractButton>(QStringLiteral("AIChatEntry2"))->click();
    const Scenes forced = OpenScenes();
    const bool taken = TakePicture("forced-open");
    Choose("WorkbenchOverride", int(EnEntryOverride::None));
    if (!taken || !WaitForEntries(m_composition.UserId())) {
        return false;
    }
    Tell(QStringLiteral("forced open: entries open: %1; and back: %2").arg(Words(forced), Words(OpenScenes())));
    return true;
}

bool CTour::SeeServerLost() {
    OpenPage(5);
    if (!LogIn(m_nFirstUser)) {
        return false;
    }
    m_nServerProcess = m_composition.Server().ProcessId();
    if (m_nServerProcess <= 0) {
        return Fail(QStringLiteral("the client has no server of its own to lose"));
    }
    m_nChannelAnswers = 0;
    ::kill(pid_t(m_nServerProcess), SIGKILL);
    if (!WaitFor(QStringLiteral("the status line to say that the server is gone"),
                 [this] { return !m_window.StatusLine().IsGood(); })) {
        return false;
    }
    Tell(QStringLiteral("server killed: \"%1\"").arg(m_window.StatusLine().Text()));
    return TakePicture("server-lost");
}

bool CTour::SeeReconnected() {
    if (!WaitFor(QStringLiteral("a new server and the same login"),
                 [this] {
                     const qint64 process = m_composition.Server().ProcessId();
                     return m_window.StatusLine().IsGood() && m_nChannelAnswers > 0 && process > 0 &&
                            process != m_nServerProcess;
                 }) ||
        !WaitForEntries(m_composition.UserId())) {
        return false;
    }
    OpenPage(1);
    Tell(QStringLiteral("reconnected: \"%1\"; user %2: entries open: %3")
             .arg(m_window.StatusLine().Text())
             .arg(m_composition.UserId())
             .arg(Words(OpenScenes())));
    return TakePicture("reconnected");
}

bool CTour::SeeLogFiltered() {
    const QString wanted = QStringLiteral("entryScene");
    OpenTab(4);
    Choose("LogSource", int(CLogFilter::EnSource::Module));
    Find<QLineEdit>(QStringLiteral("LogFilter"))->setText(wanted);
    auto* table = Find<QAbstractItemView>(QStringLiteral("LogTable"));
    const QAbstractItemModel* lines = table->model();
    if (!WaitFor(QStringLiteral("lines of the module"), [lines] { return lines->rowCount() > 0; })) {
        return false;
    }
    for (int row = 0; row < lines->rowCount(); ++row) {
        const QString text = lines->index(row, CLogModel::Text).data().toString();
        if (!text.contains(wanted)) {
            return Fail(QStringLiteral("the log shows a line that was not asked for: %1").arg(text));
        }
    }
    table->setCurrentIndex(lines->index(lines->rowCount() - 1, 0));
    if (Find<QPlainTextEdit>(QStringLiteral("LogDetail"))->toPlainText().isEmpty()) {
        return Fail(QStringLiteral("the chosen line is not shown in full"));
    }
    Tell(QStringLiteral("log filtered: %1 lines, the last: %2")
             .arg(lines->rowCount())
             .arg(lines->index(lines->rowCount() - 1, CLogModel::Text).data().toString()));
    return TakePicture("log-filtered");
}

bool CTour::ReadScenario() {
    // Shared, since an answer may come when nobody waits for it any more.
    const auto answer = std::make_shared<std::optional<QByteArray>>();
    m_composition.Control().AskScenario([answer](const QByteArray& json) { *answer = json; });
    if (!WaitFor(QStringLiteral("the server's scenario"), [&answer] { return answer->has_value(); })) {
        return false;
    }
    std::string error;
    const auto scenario = host::ParseJson((*answer)->toStdString(), error);
    if (!scenario) {
        return Fail(QStringLiteral("the server's scenario: %1").arg(QString::fromStdString(error)));
    }
    try {
        for (const Json::Value& user : (*scenario)["users"]) {
            if (!user.isMember("refuseLogin")) {
                m_expected[user["id"].asUInt64()] = OpenPages(user);
            }
        }
    } catch (const std::exception& exception) {
        return Fail(QStringLiteral("the server's scenario: %1").arg(QString::fromUtf8(exception.what())));
    }
    return true;
}

bool CTour::LogIn(quint64 userId) {
    m_nEntryAnswers = 0;
    Choose("WorkbenchUser", userId);
    Find<QAbstractButton>(QStringLiteral("WorkbenchLogin"))->click();
    return WaitFor(QStringLiteral("the login of user %1 and the module's answer").arg(userId),
                   [this, userId] { return m_composition.UserId() == userId && m_nEntryAnswers > 0; }) &&
           WaitForEntries(userId);
}

bool CTour::WaitForEntries(quint64 userId) {
    const Scenes expected = m_expected[userId];
    return WaitFor(QStringLiteral("the entries %1 of user %2, open are %3")
                       .arg(Words(expected))
                       .arg(userId)
                       .arg(Words(OpenScenes())),
                   [this, &expected] { return OpenScenes() == expected; });
}

bool CTour::WaitFor(const QString& what, const std::function<bool()>& isSo) {
    const qint64 limit = std::min(m_clock.elapsed() + kStepLimitMs, kTourLimitMs);
    bool seen = isSo();
    if (!seen) {
        QEventLoop loop;
        QTimer look;
        look.callOnTimeout(&loop, [&] {
            seen = isSo();
            if (seen || m_clock.elapsed() >= limit) {
                loop.quit();
            }
        });
        look.start(kLookEveryMs);
        loop.exec();
    }
    return seen || Fail(QStringLiteral("waited in vain for %1").arg(what));
}

bool CTour::TakePicture(const char* name, QWidget& of) {
    // What was changed is laid out by events of its own, and log lines are shown in batches.
    const auto* log = m_window.findChild<CLogModel*>();
    const auto* workbench = Find<CWorkbench>(QStringLiteral("Workbench"));
    QCoreApplication::sendPostedEvents();
    if (!WaitFor(QStringLiteral("the log view"), [=] { return workbench->IsSettled() && log->rowCount() > 0; })) {
        return false;
    }
    QCoreApplication::sendPostedEvents();
    DeleteWhatIsDone();
    const QDir folder(m_strFolder);
    const QString file =
        folder.absoluteFilePath(QStringLiteral("%1-%2.png").arg(m_nStep).arg(QString::fromLatin1(name)));
    if (folder.mkpath(QStringLiteral(".")) && of.grab().save(file)) {
        return true;
    }
    return Fail(QStringLiteral("the picture %1 can't be written").arg(file));
}

// What goes later, after a click of the tour's, would wait for the loop around the tour; a hand's click is one within
// that loop.
void CTour::DeleteWhatIsDone() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void CTour::OpenPage(int scene) {
    for (const EntryPage& page : kEntryPages) {
        if (int(page.scene) == scene) {
            Find<QAbstractButton>(QStringLiteral("NavigationTab_") + QString::fromLatin1(page.name))->click();
        }
    }
}

void CTour::Choose(const char* combo, const QVariant& data) {
    auto* box = Find<QComboBox>(QString::fromLatin1(combo));
    box->setCurrentIndex(box->findData(data));
}

CTour::Scenes CTour::OpenScenes() const {
    Scenes open;
    for (const EntryPage& page : kEntryPages) {
        if (Find<QAbstractButton>(QStringLiteral("AIChatEntry%1").arg(int(page.scene)))->isEnabled()) {
            open.insert(int(page.scene));
        }
    }
    return open;
}

bool CTour::Fail(const QString& reason) {
    m_strFailure = reason;
    return false;
}

void CTour::Tell(const QString& seen) {
    fmt::print("{}. {}\n", m_nStep, seen.toStdString());
    fflush(stdout);
}
