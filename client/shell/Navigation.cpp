#include "Navigation.h"

#include <QButtonGroup>
#include <QToolButton>
#include <QVBoxLayout>

#include "Icons.h"
#include "TabPages.h"
#include "Theme.h"
#include "Translation.h"
#include "ui/KitPaint.h"

namespace {

// Modules place overlays at 160 and 84 pixels, just beside the navigation.
constexpr int kWidth = 156;
constexpr int kCollapsedWidth = 72;
constexpr icons::Colors kTabColors{theme::kMuted, theme::kAccent, theme::kFaint};

}  // namespace

CNavigation::CNavigation(QWidget* parent)
    : QFrame(parent), m_pToggle(new QToolButton(this)), m_pGroup(new QButtonGroup(this)) {
    setObjectName(QStringLiteral("Navigation"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(5, 10, 5, 10);
    layout->setSpacing(4);
    m_pToggle->setObjectName(QStringLiteral("NavigationToggle"));
    m_pToggle->setIconSize({20, 20});
    layout->addWidget(m_pToggle);
    layout->addSpacing(6);
    for (const TabPage& shown : kTabPages) {
        auto* tab = new QToolButton(this);
        tab->setObjectName(QStringLiteral("NavigationTab_") + QString::fromLatin1(shown.page.name));
        tab->setCheckable(true);
        tab->setIconSize({20, 20});
        tab->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        m_pGroup->addButton(tab, int(m_tabs.size()));
        m_tabs.push_back(tab);
        layout->addWidget(tab);
    }
    layout->addStretch(1);
    m_tabs.front()->setChecked(true);
    connect(m_pGroup, &QButtonGroup::idClicked, this, &CNavigation::Chosen);
    connect(m_pToggle, &QToolButton::clicked, this, [this] { SetCollapsed(!m_bCollapsed); });
    SetCollapsed(false);
    theme::OnThemeChange(this, [this] { ShowIcons(); });
    translation::OnLanguageChange(this, [this] { ShowTexts(); });
}

void CNavigation::SetCollapsed(bool collapsed) {
    m_bCollapsed = collapsed;
    setFixedWidth(collapsed ? kCollapsedWidth : kWidth);
    for (QToolButton* tab : m_tabs) {
        tab->setToolButtonStyle(collapsed ? Qt::ToolButtonIconOnly : Qt::ToolButtonTextBesideIcon);
    }
    layout()->setAlignment(m_pToggle, collapsed ? Qt::AlignHCenter : Qt::AlignLeft);
    ShowTexts();
    Q_EMIT CollapsedChanged();
}

void CNavigation::ShowIcons() {
    m_pToggle->setIcon(icons::Make("menu", kTabColors));
    for (size_t index = 0; index < m_tabs.size(); ++index) {
        m_tabs[index]->setIcon(icons::Make(kTabPages[index].page.name, kTabColors));
    }
}

void CNavigation::ShowTexts() {
    m_pToggle->setToolTip(m_bCollapsed ? tr("Expand the navigation") : tr("Collapse the navigation"));
    m_pToggle->setAccessibleName(m_pToggle->toolTip());
    for (size_t index = 0; index < m_tabs.size(); ++index) {
        const QString title = translation::PageText(kTabPages[index].page.title);
        // Blanks separate the text from the icon, because a tool button has no spacing between them.
        m_tabs[index]->setText(QStringLiteral("  ") + title);
        m_tabs[index]->setToolTip(m_bCollapsed ? host::kit::TipText(title) : QString());
    }
}

void CNavigation::Show(int index) {
    m_tabs[size_t(index)]->setChecked(true);
}

void CNavigation::Choose(int index) {
    m_tabs[size_t(index)]->click();
}
