#include "UserMenu.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QWidgetAction>

#include "GrowthService.h"
#include "Links.h"
#include "Translation.h"
#include "core/url_linkid.h"

namespace {

constexpr unsigned long kHelpLink = 202019001;

QString HelpAddress() {
    return QString::fromStdString(core::url_linkid::GetLinkUrlWithTargetLinkId(kHelpLink, 0));
}

}  // namespace

CUserMenu::CUserMenu(QWidget* parent) : ZMenu(parent), m_pFind(new QLineEdit(this)) {
    setObjectName(QStringLiteral("UserMenu"));
    m_pFindAction = NewFind();
    addAction(m_pFindAction);
    m_pUsersEnd = addSeparator();
    m_pLogout = addAction(QString());
    m_pLogout->setObjectName(QStringLiteral("UserMenuLogout"));
    QAction* help = addAction(QString());
    help->setObjectName(QStringLiteral("UserMenuHelp"));
    connect(m_pLogout, &QAction::triggered, this, &CUserMenu::LogoutWanted);
    connect(help, &QAction::triggered, this, [] { links::Open(HelpAddress()); });
    connect(m_pFind, &QLineEdit::textChanged, this, &CUserMenu::Narrow);
    connect(this, &QMenu::aboutToShow, m_pFind, &QLineEdit::clear);
    connect(this, &QMenu::aboutToShow, help, [help] { help->setEnabled(!HelpAddress().isEmpty()); });
    translation::OnLanguageChange(this, [this, help] {
        m_pFind->setPlaceholderText(tr("Find a user"));
        m_pLogout->setText(tr("Log out"));
        help->setText(tr("Help"));
    });
}

// The menu forwards typed characters to the field. The field has no focus, because the menu needs the arrow keys.
QWidgetAction* CUserMenu::NewFind() {
    auto* frame = new QWidget(this);
    m_pFind->setObjectName(QStringLiteral("UserMenuFind"));
    m_pFind->setFocusPolicy(Qt::NoFocus);
    auto* layout = new QHBoxLayout(frame);
    layout->setContentsMargins(4, 2, 4, 6);
    layout->addWidget(m_pFind);
    auto* action = new QWidgetAction(this);
    action->setDefaultWidget(frame);
    return action;
}

void CUserMenu::ShowUsers(const std::vector<ServerUser>& users, quint64 current) {
    qDeleteAll(m_users);
    m_users.clear();
    for (const ServerUser& user : users) {
        auto* action = new QAction(QStringLiteral("%1  %2").arg(user.name).arg(user.id), this);
        action->setObjectName(QStringLiteral("UserMenuLogin%1").arg(user.id));
        action->setCheckable(true);
        action->setChecked(user.id == current);
        connect(action, &QAction::triggered, this, [this, id = user.id] { Q_EMIT LoginWanted(id); });
        insertAction(m_pUsersEnd, action);
        m_users << action;
    }
    m_pLogout->setEnabled(current != 0);
    Narrow();
}

void CUserMenu::RenewVipEntry() {
    delete m_pVipEntry;
    const auto service = GrowthService();
    m_pVipEntry = service ? service->GetVipMenuEntryAction(this) : nullptr;
    if (m_pVipEntry) {
        m_pVipEntry->setObjectName(QStringLiteral("UserMenuVip"));
        insertAction(m_pLogout, m_pVipEntry);
    }
}

void CUserMenu::Narrow() {
    const QString wanted = m_pFind->text().trimmed();
    QAction* first = nullptr;
    for (QAction* action : qAsConst(m_users)) {
        action->setVisible(action->text().contains(wanted, Qt::CaseInsensitive));
        first = first || !action->isVisible() ? first : action;
    }
    if (isVisible()) {
        setActiveAction(wanted.isEmpty() ? nullptr : first);
    }
}

// A blank activates the current entry, unless a name is being typed.
bool CUserMenu::IsForFind(const QKeyEvent& event) const {
    if (event.key() == Qt::Key_Backspace) {
        return true;
    }
    const bool isText = !event.text().isEmpty() && event.text().front().isPrint() &&
                        !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    return isText && (event.key() != Qt::Key_Space || !m_pFind->text().isEmpty());
}

void CUserMenu::keyPressEvent(QKeyEvent* event) {
    if (IsForFind(*event)) {
        QCoreApplication::sendEvent(m_pFind, event);
    } else {
        ZMenu::keyPressEvent(event);
    }
}
