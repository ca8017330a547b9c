#include "MainWindow.h"

#include <QHBoxLayout>
#include <QStackedWidget>
#include <QToolButton>

#include "AIChatEntryButton.h"
#include "Composition.h"
#include "Icons.h"
#include "Navigation.h"
#include "NoticeBanner.h"
#include "SampleMarket.h"
#include "StatusLine.h"
#include "Theme.h"
#include "TitleBar.h"
#include "core/environment.h"
#include "pages/NewsPage.h"
#include "pages/PortfolioPage.h"
#include "pages/QuotesPage.h"
#include "pages/ResearchPage.h"
#include "pages/WatchlistPage.h"
#include "workbench/Workbench.h"

namespace {

constexpr QSize kWindowSize(1440, 900);
constexpr int kWorkbenchWidth = 580;

// In the order of kEntryPages.
std::vector<CPage*> NewPagesOf(const CAIChatEntries& entries) {
    const SampleMarket market = SampleMarket::Load();
    return {
        new CWatchlistPage(kEntryPages[0], entries, market), new CQuotesPage(kEntryPages[1], entries, market),
        new CResearchPage(kEntryPages[2], entries, market),  new CNewsPage(kEntryPages[3], entries, market),
        new CPortfolioPage(kEntryPages[4], entries, market),
    };
}

}  // namespace

CMainWindow::CMainWindow(CComposition& composition)
    : m_composition(composition),
      m_pTitleBar(new CTitleBar(this)),
      m_pNavigation(new CNavigation(this)),
      m_pBanner(new CNoticeBanner(this)),
      m_pPages(new QStackedWidget(this)),
      m_pStatusLine(new CStatusLine(this)),
      m_pWorkbench(new CWorkbench(m_entries, composition.Control(), this)) {
    setObjectName(QStringLiteral("MainWindow"));
    theme::Keep(this, [this] { setWindowIcon(QIcon(icons::Pixmap("brand", theme::kAccent, 64))); });
    setMenuWidget(m_pTitleBar);
    setCentralWidget(NewPages());
    setStatusBar(m_pStatusLine);
    addDockWidget(Qt::RightDockWidgetArea, m_pWorkbench);
    resizeDocks({m_pWorkbench}, {kWorkbenchWidth}, Qt::Horizontal);
    resize(kWindowSize);
    // What a click came to is said of the entries as they stood then.
    connect(&m_entries, &CAIChatEntries::Changed, m_pStatusLine, [this] { m_pStatusLine->ShowNote(QString()); });
    texts::Keep(this, [this] {
        ShowEdition();
        m_pStatusLine->ShowNote(QString());
    });
    JoinComposition();
    JoinWorkbench();
    composition.Urls().SetPageHandler([this](const QUrl& url) { return OpenPage(url); });
}

CMainWindow::~CMainWindow() {
    m_composition.Urls().SetPageHandler(nullptr);
}

QWidget* CMainWindow::NewPages() {
    auto* content = new QWidget(this);
    content->setObjectName(QStringLiteral("Content"));
    m_pPages->setObjectName(QStringLiteral("Pages"));
    for (CPage* page : NewPagesOf(m_entries)) {
        m_pPages->addWidget(page);
        connect(page->Entry(), &CAIChatEntryButton::Entered, m_pStatusLine, &CStatusLine::ShowNote);
    }
    connect(m_pNavigation, &CNavigation::Chosen, m_pPages, &QStackedWidget::setCurrentIndex);
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

void CMainWindow::JoinComposition() {
    connect(&m_composition, &CComposition::StatusChanged, m_pStatusLine, &CStatusLine::ShowConnection);
    connect(&m_composition, &CComposition::ModulesReady, this, [this] {
        m_pBanner->ShowModuleFailures(m_composition.ModuleFailures());
        m_entries.Refresh();
    });
    connect(&m_composition, &CComposition::UsersChanged, this, &CMainWindow::ShowUsers);
    connect(&m_composition, &CComposition::UserChanged, this, [this] {
        ShowUsers();
        m_entries.Refresh();
    });
    connect(&m_composition, &CComposition::LanguageChanged, this, [this] {
        theme::SetLanguage(m_composition.LanguageId());
        m_pWorkbench->ShowLanguage(m_composition.LanguageId());
    });
    connect(&m_composition, &CComposition::EditionChanged, this, &CMainWindow::ShowEdition);
    connect(&m_composition, &CComposition::WebOpened, this, [this](const QUrl& url) {
        m_pStatusLine->ShowNote(texts::Tr(texts::kLinkOpened).arg(url.toDisplayString()));
    });
    connect(m_pTitleBar, &CTitleBar::LoginWanted, &m_composition, &CComposition::Login);
    connect(m_pTitleBar, &CTitleBar::LogoutWanted, &m_composition, &CComposition::Logout);
    connect(m_pTitleBar->WorkbenchButton(), &QToolButton::toggled, m_pWorkbench, &QWidget::setVisible);
    connect(m_pWorkbench, &QDockWidget::visibilityChanged, m_pTitleBar->WorkbenchButton(), [this] {
        const QSignalBlocker blocker(m_pTitleBar->WorkbenchButton());
        m_pTitleBar->WorkbenchButton()->setChecked(!m_pWorkbench->isHidden());
    });
}

void CMainWindow::JoinWorkbench() {
    // Connected first and asked then, so that nothing is missed; the models know by the numbers what comes twice.
    connect(&m_composition.Log(), &CFileLog::Written, &m_pWorkbench->Log(), &CLogModel::Add, Qt::QueuedConnection);
    for (const LogEntry& entry : m_composition.Log().Kept()) {
        m_pWorkbench->Log().Add(entry);
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
    m_pWorkbench->ShowLanguage(m_composition.LanguageId());
    ShowUsers();
}

void CMainWindow::ShowUsers() {
    m_pTitleBar->ShowUsers(m_composition.Users(), m_composition.UserId());
    m_pWorkbench->ShowUsers(m_composition.Users(), m_composition.UserId());
    m_pWorkbench->ShowMarkets(m_composition.Markets());
    LearnSecrets();
}

void CMainWindow::ShowEdition() {
    const bool velora = core::environment::IsVelora();
    setWindowTitle(texts::Tr(velora ? texts::kVelora : texts::kKestrel));
    m_pTitleBar->ShowEdition();
    m_pWorkbench->ShowEdition(velora);
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

bool CMainWindow::OpenPage(const QUrl& url) {
    if (url.host() != QLatin1String("page")) {
        return false;
    }
    for (size_t index = 0; index < kEntryPages.size(); ++index) {
        if (url.path() == QLatin1Char('/') + QString::fromLatin1(kEntryPages[index].name)) {
            m_pNavigation->Choose(int(index));
            return true;
        }
    }
    return false;
}
