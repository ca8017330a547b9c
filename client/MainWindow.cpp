#include "MainWindow.h"

#include <QDockWidget>
#include <QHBoxLayout>
#include <QStackedWidget>
#include <QTimer>
#include <QToolButton>
#include <algorithm>

#include "AIChatEntryButton.h"
#include "Composition.h"
#include "Icons.h"
#include "Navigation.h"
#include "NoticeBanner.h"
#include "SampleMarket.h"
#include "StatusLine.h"
#include "Theme.h"
#include "TitleBar.h"
#include "Translation.h"
#include "core/environment.h"
#include "core/uniform_resource_slot.h"
#include "pages/AccountPage.h"
#include "pages/AlertsPage.h"
#include "pages/MarketPage.h"
#include "pages/NewsPage.h"
#include "pages/PortfolioPage.h"
#include "pages/QuotesPage.h"
#include "pages/ResearchPage.h"
#include "pages/WatchlistPage.h"
#include "workbench/Workbench.h"
#include "workbench/ads/AdSwitches.h"

namespace {

constexpr QSize kWindowSize(1440, 900);
constexpr int kWorkbenchWidth = 580;
constexpr int kWorkbenchLeastWidth = 400;

}  // namespace

CMainWindow::CMainWindow(CComposition& composition)
    : m_composition(composition),
      m_pTitleBar(new CTitleBar(this)),
      m_pNavigation(new CNavigation(this)),
      m_pBanner(new CNoticeBanner(this)),
      m_pPages(new QStackedWidget(this)),
      m_pStatusLine(new CStatusLine(this)),
      m_pDock(NewDock()),
      m_firstFrame(*this, [this] {
          Q_EMIT Appeared();
          MakeNext();
      }) {
    setObjectName(QStringLiteral("MainWindow"));
    theme::Keep(this, [this] { setWindowIcon(QIcon(icons::Pixmap("brand", theme::kAccent, 64))); });
    setMenuWidget(m_pTitleBar);
    setCentralWidget(NewContent());
    m_pPages->setCurrentWidget(PageAt(m_nTab));
    setStatusBar(m_pStatusLine);
    addDockWidget(Qt::RightDockWidgetArea, m_pDock);
    resizeDocks({m_pDock}, {kWorkbenchWidth}, Qt::Horizontal);
    resize(kWindowSize);
    // What a click came to is said of the entries as they stood then.
    connect(&m_entries, &CAIChatEntries::Changed, m_pStatusLine, [this] { m_pStatusLine->ShowNote(QString()); });
    translation::OnLanguageChange(this, [this] {
        ShowEdition();
        m_pStatusLine->ShowNote(QString());
    });
    JoinComposition();
    OfferMainFrame();
    composition.Urls().SetPageHandler([this](const QUrl& url) { return OpenPage(url); });
}

CMainWindow::~CMainWindow() {
    m_composition.TakeMainFrameAway();
    m_composition.Urls().SetPageHandler(nullptr);
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

// The workbench's room is there from the first frame on, so that the pages don't move when it comes.
QDockWidget* CMainWindow::NewDock() {
    auto* dock = new QDockWidget(this);
    dock->setObjectName(QStringLiteral("WorkbenchDock"));
    dock->setFeatures(QDockWidget::DockWidgetMovable);
    dock->setMinimumWidth(kWorkbenchLeastWidth);
    translation::OnLanguageChange(dock, [dock] { dock->setWindowTitle(tr("Workbench")); });
    auto* content = new QWidget(dock);
    content->setObjectName(QStringLiteral("WorkbenchContent"));
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(14, 6, 14, 12);
    dock->setWidget(content);
    return dock;
}

void CMainWindow::OfferMainFrame() {
    m_composition.OfferMainFrame({[this] { return this; }, [this] { return kTabPages[size_t(m_nTab)].Key(); },
                                  [this] { return HasFocus(); }, [this] { return m_pNavigation->IsCollapsed(); }});
}

bool CMainWindow::HasFocus() const {
    return m_focusAnswer == EnFocusAnswer::AsItIs ? isActiveWindow() : m_focusAnswer == EnFocusAnswer::Always;
}

void CMainWindow::ShowPage(int index) {
    if (index == m_nTab) {
        return;
    }
    m_nTab = index;
    m_pPages->setCurrentWidget(PageAt(index));
    if (m_pWorkbench) {
        m_pWorkbench->AdSwitches().ShowTab(index);
    }
    if (m_bModulesReady) {
        m_composition.TellTab(kTabPages[size_t(index)].Key());
    }
}

CPage* CMainWindow::NewPage(int index) {
    const auto& [tab, page] = kTabPages[size_t(index)];
    switch (tab) {
        case kTabWatchlist:
            return new CWatchlistPage(page, m_entries, m_market, m_pPages);
        case kTabMarket:
            return new CMarketPage(page, m_entries, m_market, m_ads, m_pPages);
        case kTabQuotes:
            return new CQuotesPage(page, m_entries, m_market, m_pPages);
        case kTabResearch:
            return new CResearchPage(page, m_entries, m_market, m_pPages);
        case kTabNews:
            return new CNewsPage(page, m_entries, m_market, m_pPages);
        case kTabAlerts:
            return new CAlertsPage(page, m_entries, m_market, m_ads, m_pPages);
        case kTabPortfolio:
            return new CPortfolioPage(page, m_entries, m_market, m_pPages);
        case kTabAccount:
            break;
    }
    return new CAccountPage(page, m_entries, m_market, m_pPages);
}

CPage* CMainWindow::PageAt(int index) {
    CPage*& page = m_made[size_t(index)];
    if (!page) {
        page = NewPage(index);
        m_pPages->addWidget(page);
        if (page->Entry()) {
            connect(page->Entry(), &CAIChatEntryButton::Entered, m_pStatusLine, &CStatusLine::ShowNote);
        }
    }
    return page;
}

void CMainWindow::MakeWorkbench() {
    m_pWorkbench = new CWorkbench(m_entries, m_rights, m_composition.Control(), m_pDock->widget());
    m_pDock->widget()->layout()->addWidget(m_pWorkbench);
    JoinWorkbench();
}

void CMainWindow::MakeNext() {
    const auto missing = std::find(m_made.begin(), m_made.end(), nullptr);
    if (!m_pWorkbench) {
        MakeWorkbench();
    } else if (missing != m_made.end()) {
        PageAt(int(missing - m_made.begin()));
    } else {
        Q_EMIT Completed();
        return;
    }
    // By a timer, not posted: what the user did meanwhile comes first.
    QTimer::singleShot(0, this, &CMainWindow::MakeNext);
}

void CMainWindow::JoinComposition() {
    connect(&m_composition, &CComposition::StatusChanged, m_pStatusLine, &CStatusLine::ShowConnection);
    m_composition.TellStatus();
    connect(&m_composition, &CComposition::ModulesReady, this, [this] {
        m_pBanner->ShowModuleFailures(m_composition.ModuleFailures());
        m_entries.Refresh();
        m_rights.Refresh();
        m_bModulesReady = true;
        m_composition.TellTab(kTabPages[size_t(m_nTab)].Key());
    });
    connect(&m_composition, &CComposition::UsersChanged, this, &CMainWindow::ShowUsers);
    connect(&m_composition, &CComposition::UserChanged, this, [this] {
        ShowUsers();
        m_entries.Refresh();
        m_rights.Refresh();
        m_ads.Refresh();
    });
    connect(&m_composition, &CComposition::LanguageChanged, this, [this] {
        theme::SetLanguage(m_composition.LanguageId());
        m_ads.Refresh();
    });
    connect(&m_composition, &CComposition::EditionChanged, this, &CMainWindow::ShowEdition);
    connect(&m_composition, &CComposition::EditionChanged, &m_rights, &CPremiumRights::Refresh);
    connect(&m_composition, &CComposition::SessionRenewed, &m_rights, &CPremiumRights::Refresh);
    connect(&m_composition, &CComposition::WebOpened, this,
            [this](const QUrl& url) { m_pStatusLine->ShowNote(tr("Opened: %1").arg(url.toDisplayString())); });
    connect(m_pTitleBar, &CTitleBar::LoginWanted, &m_composition, &CComposition::Login);
    connect(m_pTitleBar, &CTitleBar::LogoutWanted, &m_composition, &CComposition::Logout);
    connect(m_pTitleBar->WorkbenchButton(), &QToolButton::toggled, m_pDock, &QWidget::setVisible);
    connect(m_pDock, &QDockWidget::visibilityChanged, m_pTitleBar->WorkbenchButton(), [this] {
        const QSignalBlocker blocker(m_pTitleBar->WorkbenchButton());
        m_pTitleBar->WorkbenchButton()->setChecked(!m_pDock->isHidden());
    });
}

void CMainWindow::JoinWorkbench() {
    // Connected first and asked then, so that nothing is missed; the models know by the numbers what comes twice.
    connect(&m_composition.Log(), &CFileLog::Written, m_pWorkbench, &CWorkbench::TakeLine, Qt::QueuedConnection);
    for (const LogEntry& entry : m_composition.Log().Kept()) {
        m_pWorkbench->TakeLine(entry);
    }
    connect(&m_composition.Observation(), &CObservation::Happened, m_pWorkbench, &CWorkbench::Take,
            Qt::QueuedConnection);
    for (const Seen& seen : m_composition.Observation().Kept()) {
        m_pWorkbench->Take(seen);
    }
    connect(&m_composition, &CComposition::SessionRenewed, this, &CMainWindow::LearnSecrets);
    connect(&m_composition.Server(), &CServerProcess::Ready, m_pWorkbench, &CWorkbench::ForgetServer);
    connect(m_pWorkbench, &CWorkbench::EditionWanted, &m_composition, &CComposition::SetVelora);
    connect(m_pWorkbench, &CWorkbench::MarketsWanted, &m_composition, &CComposition::OverrideMarkets);
    connect(m_pWorkbench, &CWorkbench::LoginWanted, &m_composition, &CComposition::Login);
    connect(m_pWorkbench, &CWorkbench::LogoutWanted, &m_composition, &CComposition::Logout);
    connect(m_pWorkbench, &CWorkbench::LanguageWanted, &m_composition, &CComposition::SetLanguage);
    connect(m_pWorkbench, &CWorkbench::ThemeWanted, &m_composition, &CComposition::SetTheme);
    connect(&m_composition, &CComposition::UsersChanged, m_pWorkbench, [this] { ShowWorkbenchUsers(); });
    connect(&m_composition, &CComposition::UserChanged, m_pWorkbench, [this] { ShowWorkbenchUsers(); });
    const auto showLanguage = [this] { m_pWorkbench->ShowLanguage(m_composition.LanguageId()); };
    connect(&m_composition, &CComposition::LanguageChanged, m_pWorkbench, showLanguage);
    const auto showEdition = [this] { m_pWorkbench->ShowEdition(core::environment::IsVelora()); };
    connect(&m_composition, &CComposition::EditionChanged, m_pWorkbench, showEdition);
    showLanguage();
    showEdition();
    ShowWorkbenchUsers();
    JoinAdSwitches();
}

void CMainWindow::JoinAdSwitches() {
    CAdSwitches& switches = m_pWorkbench->AdSwitches();
    switches.ShowTab(m_nTab);
    connect(&switches, &CAdSwitches::TabWanted, m_pNavigation, &CNavigation::Choose);
    connect(&switches, &CAdSwitches::FocusWanted, this, [this](EnFocusAnswer answer) { m_focusAnswer = answer; });
    connect(&switches, &CAdSwitches::SlotRefusalWanted, this,
            [this](bool refused) { m_composition.Slots().Allow(kSlotAdPopup, !refused); });
}

void CMainWindow::ShowUsers() {
    m_pTitleBar->ShowUsers(m_composition.Users(), m_composition.UserId());
}

void CMainWindow::ShowWorkbenchUsers() {
    m_pWorkbench->ShowUsers(m_composition.Users(), m_composition.UserId());
    m_pWorkbench->ShowMarkets(m_composition.Markets());
    LearnSecrets();
}

void CMainWindow::ShowEdition() {
    const bool velora = core::environment::IsVelora();
    setWindowTitle(velora ? QStringLiteral("Velora") : QStringLiteral("Kestrel"));
    m_pTitleBar->ShowEdition();
}

// Each login has a session of its own, and what was seen in the former ones is still there.
void CMainWindow::LearnSecrets() {
    CAliases& aliases = m_pWorkbench->Aliases();
    for (const ServerUser& user : m_composition.Users()) {
        aliases.LearnNumber(QStringLiteral("user"), user.id);
        aliases.LearnText(QStringLiteral("name"), user.name);
    }
    aliases.LearnNumber(QStringLiteral("user"), m_composition.UserId());
    aliases.LearnNumber(QStringLiteral("session"), m_composition.SessionId());
    aliases.LearnText(QStringLiteral("device"), QString::fromStdString(m_composition.DeviceId()));
    aliases.LearnText(QStringLiteral("token"), QString::fromLatin1(m_composition.Token()));
}

void CMainWindow::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    CAds::PlacePopup();
}

bool CMainWindow::OpenPage(const QUrl& url) {
    if (url.host() != QLatin1String("page")) {
        return false;
    }
    for (size_t index = 0; index < kTabPages.size(); ++index) {
        if (url.path() == QLatin1Char('/') + QString::fromLatin1(kTabPages[index].page.name)) {
            // Later: whoever opened it has yet to say that it was clicked, and may go with the tab.
            QMetaObject::invokeMethod(
                this, [this, index] { m_pNavigation->Choose(int(index)); }, Qt::QueuedConnection);
            return true;
        }
    }
    return false;
}
