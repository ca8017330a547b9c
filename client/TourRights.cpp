// The tour's steps through rights and VIP status.
#include <QAbstractButton>
#include <QAbstractItemModel>
#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTabWidget>
#include <QTableView>
#include <QToolButton>

#include "Composition.h"
#include "Tour.h"
#include "core/lang.h"
#include "ui/zr_ui_theme.h"
#include "workbench/rights/RefreshBoard.h"
#include "workbench/rights/RightsModel.h"

namespace {

constexpr int kTabRights = 1;

enum EnPart { kPartRight, kPartRefreshes, kPartAsk, kPartPushes, kPartAnswers };

}  // namespace

quint64 CTour::UserNamed(const QString& word) const {
    for (const ServerUser& user : m_composition.Users()) {
        if (user.name.section(QLatin1Char(' '), 1, 1) == word) {
            return user.id;
        }
    }
    return 0;
}

// As one finds somebody among many: the menu opens, a word is typed, and Enter takes who is left.
bool CTour::LogInByMenu(const QString& word, quint64 userId) {
    auto* button = Find<QToolButton>(QStringLiteral("UserMenuButton"));
    auto* menu = Find<QMenu>(QStringLiteral("UserMenu"));
    const auto press = [menu](int key, const QString& text) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(menu, &event);
    };
    const auto save = [this, menu](const char* name) {
        const QString file = QStringLiteral("%1-%2.png").arg(m_nStep).arg(QString::fromLatin1(name));
        return menu->grab().save(QDir(m_strFolder).absoluteFilePath(file)) ||
               Fail(QStringLiteral("the picture %1 can't be written").arg(file));
    };
    m_nEntryAnswers = 0;
    menu->popup(button->mapToGlobal(QPoint(0, button->height())));
    bool good = WaitFor(QStringLiteral("the menu of users"), [menu] { return menu->isVisible(); }) && save("users");
    for (const QChar letter : word) {
        press(0, letter);
    }
    good = good && save("users-narrowed");
    press(Qt::Key_Return, QStringLiteral("\r"));
    return good &&
           WaitFor(QStringLiteral("the login of user %1 and the module's answer").arg(userId),
                   [this, userId] { return m_composition.UserId() == userId && m_nEntryAnswers > 0; }) &&
           WaitForEntries(userId);
}

bool CTour::SeeMember() {
    const QString word = QStringLiteral("Monthly");
    const quint64 member = UserNamed(word);
    if (member == 0) {
        return Fail(QStringLiteral("the scenario has no monthly member"));
    }
    OpenTab(kTabRights);
    const QAbstractItemModel* rights = Find<QTableView>(QStringLiteral("RightsTable"))->model();
    if (!LogInByMenu(word, member) ||
        !WaitFor(QStringLiteral("the member's rights"), [rights] { return rights->rowCount() > 0; }) ||
        !WaitFor(QStringLiteral("the member's VIP status"), [this] {
            return Find<QLabel>(QStringLiteral("VipNewState"))->text().contains(QStringLiteral("member"));
        })) {
        return false;
    }
    Find<QTableView>(QStringLiteral("RightsTable"))->selectRow(0);
    Tell(QStringLiteral("member %1: %2 rights, engine status %3")
             .arg(member)
             .arg(rights->rowCount())
             .arg(Find<QLabel>(QStringLiteral("VipEngineStatus"))->text()));
    return TakeThemePictures("rights");
}

bool CTour::TakeThemePictures(const char* name) {
    const QVariant theme = Find<QComboBox>(QStringLiteral("WorkbenchTheme"))->currentData();
    for (const auto number :
         {zr_ui_theme::Manager::kThemeLight, zr_ui_theme::Manager::kThemeDarkBlue, zr_ui_theme::Manager::kThemeBlack}) {
        Choose("WorkbenchTheme", int(number));
        const QByteArray picture = QByteArray(name) + "-theme-" + QByteArray::number(int(number));
        if (!WaitFor(QStringLiteral("the window in theme %1").arg(number), [this] { return WearsTheme(); }) ||
            !TakePicture(picture.constData())) {
            return false;
        }
    }
    Choose("WorkbenchTheme", theme);
    return true;
}

bool CTour::SeePushedRights() {
    auto* parts = Find<QTabWidget>(QStringLiteral("RightsTabs"));
    auto* refreshes = Find<QLabel>(QStringLiteral("RefreshPremium"));
    const auto* board = m_window.findChild<CRefreshBoard*>();
    const QVariant language = Find<QComboBox>(QStringLiteral("WorkbenchLanguage"))->currentData();
    Choose("WorkbenchLanguage", int(core::lang::kLanguageSimplifiedChinese));
    parts->setCurrentIndex(kPartPushes);
    Find<QLineEdit>(QStringLiteral("PushDelay"))->setText(QStringLiteral("1"));
    Find<QAbstractButton>(QStringLiteral("PushPremium"))->click();
    const bool waited = WaitFor(QStringLiteral("the push"), [board] { return !board->WaitingPushes().empty(); });
    const bool taken = TakePicture("rights-push");
    parts->setCurrentIndex(kPartRefreshes);
    if (!waited || !taken || !TakePicture("rights-waiting") ||
        !WaitFor(QStringLiteral("the refresh that the push asked for"), [refreshes] {
            return refreshes->text().contains(QStringLiteral("push")) &&
                   refreshes->text().contains(QStringLiteral("good"));
        })) {
        return false;
    }
    Tell(QStringLiteral("push: the rights were refreshed: %1").arg(refreshes->text()));
    const bool seen = TakePicture("rights-refreshed");
    for (const auto& [part, name] : {std::pair{kPartAsk, "rights-ask"}, std::pair{kPartAnswers, "rights-answers"}}) {
        parts->setCurrentIndex(part);
        if (!TakePicture(name)) {
            return false;
        }
    }
    parts->setCurrentIndex(kPartRight);
    Choose("WorkbenchLanguage", language);
    OpenTab(0);
    return seen;
}
