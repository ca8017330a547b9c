#include "TitleBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

#include "GrowthService.h"
#include "Icons.h"
#include "Theme.h"
#include "Translation.h"
#include "UserMenu.h"
#include "core/environment.h"

namespace {

constexpr int kVipEntryPlace = 2;  // behind the product's name
constexpr icons::Colors kButtonColors{theme::kMuted, theme::kAccent, theme::kFaint};

}  // namespace

CTitleBar::CTitleBar(QWidget* parent)
    : QFrame(parent),
      m_pLayout(new QHBoxLayout(this)),
      m_pProduct(new QLabel(this)),
      m_pWorkbench(new QToolButton(this)),
      m_pUser(new QToolButton(this)),
      m_pMenu(new CUserMenu(this)) {
    setObjectName(QStringLiteral("TitleBar"));
    auto* mark = new QLabel(this);
    m_pProduct->setObjectName(QStringLiteral("ProductName"));
    m_pWorkbench->setObjectName(QStringLiteral("WorkbenchToggle"));
    m_pWorkbench->setIconSize({20, 20});
    m_pWorkbench->setCheckable(true);
    m_pWorkbench->setChecked(true);
    m_pUser->setObjectName(QStringLiteral("UserMenuButton"));
    m_pUser->setIconSize({20, 20});
    m_pUser->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_pUser->setPopupMode(QToolButton::InstantPopup);
    m_pUser->setMenu(m_pMenu);
    connect(m_pMenu, &CUserMenu::LoginWanted, this, &CTitleBar::LoginWanted);
    connect(m_pMenu, &CUserMenu::LogoutWanted, this, &CTitleBar::LogoutWanted);
    m_pLayout->setContentsMargins(16, 0, 10, 0);
    m_pLayout->setSpacing(10);
    m_pLayout->addWidget(mark);
    m_pLayout->addWidget(m_pProduct);
    m_pLayout->addStretch(1);
    m_pLayout->addWidget(m_pWorkbench);
    m_pLayout->addWidget(m_pUser);
    theme::OnThemeChange(this, [this, mark] {
        mark->setPixmap(icons::Pixmap("brand", theme::kAccent, 22));
        m_pWorkbench->setIcon(icons::Make("workbench", kButtonColors));
        m_pUser->setIcon(icons::Make("user", kButtonColors));
    });
    translation::OnLanguageChange(this, [this] {
        ShowTexts();
        ShowEdition();
    });
}

void CTitleBar::ShowEdition() {
    m_pProduct->setText(core::environment::IsVelora() ? QStringLiteral("Velora") : QStringLiteral("Kestrel"));
}

void CTitleBar::ShowUsers(const std::vector<ServerUser>& users, quint64 current) {
    m_users = users;
    m_nCurrent = current;
    m_pMenu->ShowUsers(users, current);
    ShowTexts();
}

void CTitleBar::RenewVipEntries() {
    m_pMenu->RenewVipEntry();
    delete m_pVipEntry;
    const auto service = GrowthService();
    // The size of the entry changes with the status.
    const CSafeFunction<void()> changed(this, [this] { m_pLayout->invalidate(); });
    m_pVipEntry = service ? service->GetVipTitleBarEntryWidget(this, changed) : nullptr;
    if (m_pVipEntry) {
        m_pVipEntry->setObjectName(QStringLiteral("TitleBarVip"));
        m_pVipEntry->setToolTip(tr("Member"));
        m_pVipEntry->setAccessibleName(tr("Member"));
        m_pLayout->insertWidget(kVipEntryPlace, m_pVipEntry, 0, Qt::AlignVCenter);
    }
}

void CTitleBar::ShowTexts() {
    QString name = m_nCurrent == 0 ? tr("Nobody is logged in") : QString::number(m_nCurrent);
    for (const ServerUser& user : m_users) {
        if (user.id == m_nCurrent) {
            name = user.name;
        }
    }
    m_pUser->setText(name);
    m_pUser->setToolTip(tr("Switch the user"));
    m_pUser->setAccessibleDescription(m_pUser->toolTip());
    m_pWorkbench->setToolTip(tr("Show or hide the workbench"));
    m_pWorkbench->setAccessibleName(m_pWorkbench->toolTip());
}
