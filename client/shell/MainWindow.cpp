#include "MainWindow.h"

#include <QDockWidget>
#include <QHBoxLayout>
#include <QScrollArea>
#include <QStackedWidget>
#include <QTimer>
#include <QToolButton>
#include <algorithm>

#include "AIChatEntryButton.h"
#include "ISessionControl.h"
#include "Icons.h"
#include "Navigation.h"
#include "NoticeBanner.h"
#include "SampleMarket.h"
#include "StatusLine.h"
#include "Theme.h"
#include "TitleBar.h"
#include "Translation.h"
#include "WindowState.h"
#include "core/environment.h"
#include "pages/AccountPage.h"
#include "pages/AlertsPage.h"
#include "pages/MarketPage.h"
#include "pages/NewsPage.h"
#include "pages/PortfolioPage.h"
#include "pages/QuotesPage.h"
#include "pages/ResearchPage.h"
#include "pages/WatchlistPage.h"

namespace {

constexpr QSize kFirstSize(1440, 900);
constexpr int kPageWidth = 860;  // with the navigation
constexpr int kWorkbenchWidth = 580;
constexpr int kWorkbenchLeastWidth = 400;

// Returns -1 if no page has this name.
int TabOf(const QString& name) {
    const auto tab = std::find_if(kTabPages.begin(), kTabPages.end(),
                                  [&name](const TabPage& row) { return name == QLatin1String(row.page.name); });
    return tab == kTabPages.end() ? -1 : int(tab - kTabPages.begin());
}

// Content that is higher or wider than its place scrolls. Keyboard focus scrolls its control into view.
QScrollArea* NewArea(const char* name, QWidget* content, QWidget* parent) {
    auto* area = new QScrollArea(parent);
    area->setObjectName(QString::fromLatin1(name));
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(content);
    // The background behind the area shows through.
    content->setAutoFillBackground(false);
    area->viewport()->setAutoFillBackground(false);
    return area;
}

}  // namespace

CMainWindow::CMainWindow(ISessionControl& session)
    : m_session(session),
      m_pTitleBar(new CTitleBar(this)),
      m_pNavigation(new CNavigation(this)),
      m_pBanner(new CNoticeBanner(this)),
      m_pPages(new QStackedWidget(this)),
      m_pStatusLine(new CStatusLine(this)),
      m_pDock(NewDock()),
      m_firstPaint(*this, [this] {
          Q_EMIT Appeared();
          CreateNextLazyPart();
      }) {
    setObjectName(QStringLiteral("MainWindow"));
    theme::OnThemeChange(this, [this] { setWindowIcon(QIcon(icons::Pixmap("brand", theme::kAccent, 64))); });
    setMenuWidget(m_pTitleBar);
    setCentralWidget(NewContent());
    setStatusBar(m_pStatusLine);
    addDockWidget(Qt::RightDockWidgetArea, m_pDock);
    // The note describes a click on the entries' former state.
    connect(&m_entries, &CAIChatEntries::Changed, m_pStatusLine, [this] { m_pStatusLine->ShowNote(QString()); });
    translation::OnLanguageChange(this, [this] {
        ShowEdition();
        m_pStatusLine->ShowNote(QString());
    });
    ConnectSession();
    RestoreState();
}

CMainWindow::~CMainWindow() {
    window_state::Save(*this, {QString::fromLatin1(kTabPages[size_t(m_nTab)].page.name), m_pNavigation->IsCollapsed()});
}

void CMainWindow::RestoreState() {
    const window_state::State state = window_state::Restore(*this, kFirstSize);
    if (state.page.isEmpty()) {
        resizeDocks({m_pDock}, {qBound(kWorkbenchLeastWidth, width() - kPageWidth, kWorkbenchWidth)}, Qt::Horizontal);
    }
    const int tab = TabOf(state.page);
    m_nTab = tab < 0 ? 0 : tab;
    m_pNavigation->Show(m_nTab);
    m_pNavigation->SetCollapsed(state.collapsed);
    m_pTitleBar->WorkbenchButton()->setChecked(!m_pDock->isHidden());
    ShowCurrentPage();
    // Otherwise the first button has the focus at the start, and shows it.
    centralWidget()->setFocus();
}

void CMainWindow::ShowCurrentPage() {
    m_pPages->setCurrentWidget(PageAt(m_nTab)->parentWidget()->parentWidget());
}

QWidget* CMainWindow::NewContent() {
    auto* content = new QWidget(this);
    content->setObjectName(QStringLiteral("Content"));
    m_pPages->setObjectName(QStringLiteral("Pages"));
    connect(m_pNavigation, &CNavigation::Chosen, this, &CMainWindow::ShowPage);
    connect(m_pNavigation, &CNavigation::CollapsedChanged, this, &CAds::PlacePopup);
    auto* right = new QVBoxLayout;
    right->setSpacing(0);
    right->addWidget(m_pBanner);
    right->addWidget(m_pPages, 1);
    auto* layout = new QHBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_pNavigation);
    layout->addLayout(right, 1);
    return content;
}

// The dock is in the first frame, so that the pages do not move when its content is created.
QDockWidget* CMainWindow::NewDock() {
    auto* dock = new QDockWidget(this);
    dock->setObjectName(QStringLiteral("WorkbenchDock"));
    dock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
    dock->setMinimumWidth(kWorkbenchLeastWidth);
    translation::OnLanguageChange(dock, [dock] { dock->setWindowTitle(tr("Workbench")); });
    auto* content = new QWidget(dock);
    content->setObjectName(QStringLiteral("WorkbenchContent"));
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(14, 6, 14, 12);
    dock->setWidget(content);
    return dock;
}

void CMainWindow::ShowPage(int index) {
    if (index == m_nTab) {
        return;
    }
    m_nTab = index;
    ShowCurrentPage();
    OnTabChanged(index);
}

CPage* CMainWindow::NewPage(int index) {
    const auto& [tab, page] = kTabPages[size_t(index)];
    switch (tab) {
        case EnZRTabFrameWatchlist:
            return new CWatchlistPage(page, m_entries, m_market, m_pPages);
        case EnZRTabFrameMarket:
            return new CMarketPage(page, m_entries, m_market, m_ads, m_pPages);
        case EnZRTabFrameQuotes:
            return new CQuotesPage(page, m_entries, m_market, m_rights, m_pPages);
        case EnZRTabFrameResearch:
            return new CResearchPage(page, m_entries, m_market, m_rights, m_pPages);
        case EnZRTabFrameNews:
            return new CNewsPage(page, m_entries, m_market, m_rights, m_pPages);
        case EnZRTabFrameAlerts:
            return new CAlertsPage(page, m_entries, m_market, m_ads, m_pPages);
        case EnZRTabFramePortfolio:
            return new CPortfolioPage(page, m_entries, m_market, m_pPages);
        case EnZRTabFrameAccount:
            break;
    }
    return new CAccountPage(page, m_entries, m_market, m_session, m_rights, m_pPages);
}

CPage* CMainWindow::PageAt(int index) {
    CPage*& page = m_pages[size_t(index)];
    if (!page) {
        page = NewPage(index);
        m_pPages->addWidget(NewArea("PageArea", page, m_pPages));
        if (page->Entry()) {
            connect(page->Entry(), &CAIChatEntryButton::Entered, m_pStatusLine, &CStatusLine::ShowNote);
        }
    }
    return page;
}

void CMainWindow::CreateNextLazyPart() {
    const auto missing = std::find(m_pages.begin(), m_pages.end(), nullptr);
    if (!m_pDockContent) {
        m_pDockContent = NewDockContent(m_pDock->widget());
        m_pDock->widget()->layout()->addWidget(NewArea("WorkbenchArea", m_pDockContent, m_pDock));
    } else if (missing != m_pages.end()) {
        PageAt(int(missing - m_pages.begin()));
    } else {
        Q_EMIT Completed();
        return;
    }
    // A timer instead of a posted event, so that pending user input is handled first.
    QTimer::singleShot(0, this, &CMainWindow::CreateNextLazyPart);
}

void CMainWindow::ConnectSession() {
    connect(&m_session, &ISessionControl::StatusChanged, m_pStatusLine, &CStatusLine::ShowConnection);
    m_session.EmitStatus();
    connect(&m_session, &ISessionControl::ModulesReady, this, [this] {
        m_pBanner->ShowModuleFailures(m_session.ModuleFailures());
        m_entries.Refresh();
        m_rights.Refresh();
        m_pTitleBar->RenewVipEntries();
    });
    connect(&m_session, &ISessionControl::UsersChanged, this, &CMainWindow::ShowUsers);
    connect(&m_session, &ISessionControl::UserChanged, this, [this] {
        ShowUsers();
        m_entries.Refresh();
        m_rights.Refresh();
        m_ads.Refresh();
        m_pTitleBar->RenewVipEntries();
    });
    connect(&m_session, &ISessionControl::LanguageChanged, this, [this] {
        theme::SetLanguage(m_session.LanguageId());
        m_ads.Refresh();
    });
    connect(&m_session, &ISessionControl::EditionChanged, this, &CMainWindow::ShowEdition);
    connect(&m_session, &ISessionControl::EditionChanged, &m_rights, &CPremiumRights::Refresh);
    connect(&m_session, &ISessionControl::SessionRenewed, &m_rights, &CPremiumRights::Refresh);
    connect(&m_session, &ISessionControl::WebOpened, this, [this](const QUrl& url, const QSize& windowSize) {
        const QString size = windowSize.isValid()
                                 ? QStringLiteral(" (%1 \u00D7 %2)").arg(windowSize.width()).arg(windowSize.height())
                                 : QString();
        m_pStatusLine->ShowNote(tr("Opened: %1").arg(url.toDisplayString() + size));
    });
    connect(m_pTitleBar, &CTitleBar::LoginWanted, &m_session, &ISessionControl::Login);
    connect(m_pTitleBar, &CTitleBar::LogoutWanted, &m_session, &ISessionControl::Logout);
    connect(m_pTitleBar->WorkbenchButton(), &QToolButton::toggled, m_pDock, &QWidget::setVisible);
    connect(m_pDock, &QDockWidget::visibilityChanged, m_pTitleBar->WorkbenchButton(), [this] {
        const QSignalBlocker blocker(m_pTitleBar->WorkbenchButton());
        m_pTitleBar->WorkbenchButton()->setChecked(!m_pDock->isHidden());
    });
}

void CMainWindow::ShowUsers() {
    m_pTitleBar->ShowUsers(m_session.Users(), m_session.UserId());
}

void CMainWindow::ShowEdition() {
    const bool velora = core::environment::IsVelora();
    setWindowTitle(velora ? QStringLiteral("Velora") : QStringLiteral("Kestrel"));
    m_pTitleBar->ShowEdition();
    m_pTitleBar->RenewVipEntries();
}

void CMainWindow::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    CAds::PlacePopup();
}

bool CMainWindow::OpenPage(const QUrl& url) {
    if (url.host() != QLatin1String("page")) {
        return false;
    }
    const int tab = TabOf(url.path().mid(1));
    if (tab >= 0) {
        // Runs later, because a click handler that is still running can belong to the current page.
        QMetaObject::invokeMethod(
            this, [this, tab] { m_pNavigation->Choose(tab); }, Qt::QueuedConnection);
    }
    return tab >= 0;
}
