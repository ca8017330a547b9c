#include "workbench/Workbench.h"

#include <signal.h>

#include <QDateTime>
#include <QJsonDocument>
#include <QMetaProperty>
#include <QShortcut>
#include <QStandardPaths>

#include "core/config_local.h"
#include "core/time_date.h"
#include "webview/WebHost.h"
#include "workbench/UserPage.h"
#include "workbench/Widgets.h"
#include "workbench/diagnosis/Tracker.h"
#include "workbench/diagnosis/WhyPage.h"
#include "workbench/server/ServerPage.h"

namespace {

constexpr int kUserTab = 1;  // current at the first start
constexpr int kTabMargin = 10;
constexpr const char* kViewKey = "Client_Workbench";

/// Uses the current difference of the clocks.
qint64 ToServer(qint64 localMs) {
    return localMs + core::time_date::GetSvrTimeMillis() - QDateTime::currentMSecsSinceEpoch();
}

/// Texts that wrap make a column ask for its preferred height. This one can do with its least.
class CLowColumn : public QVBoxLayout {
public:
    using QVBoxLayout::QVBoxLayout;
    bool hasHeightForWidth() const override { return false; }
};

QTabWidget* NewTabs(const QString& name, QWidget* parent) {
    auto* tabs = widgets::New<QTabWidget>(name, parent);
    tabs->setDocumentMode(true);
    return tabs;
}

QString WebState() {
    const auto& web = host::web::CWebHost::Instance();
    QStringList processes;
    const QList<qint64> running = web.PageProcesses();
    for (const qint64 process : running) {
        processes << QString::number(process);
    }
    return web.ViewCount() == 0 ? "The web engine displays no page"_q
                                : "Pages: %1, windows: %2, processes: %3"_q.arg(web.ViewCount())
                                      .arg(web.WindowCount())
                                      .arg(processes.isEmpty() ? "none"_q : processes.join(QLatin1Char(' ')));
}

}  // namespace

CWorkbench::CWorkbench(ISessionControl& session, CAIChatEntries& entries, CPremiumRights& rights,
                       IControlClient& server, QWidget* parent)
    : QWidget(parent),
      m_session(session),
      m_server(server),
      m_pTabs(NewTabs("WorkbenchTabs"_q, this)),
      m_pTrafficTabs(NewTabs("TrafficTabs"_q, widgets::PagesOf(m_pTabs))),
      m_pTracker(new CTracker(ToServer, this)),
      m_pUser(new CUserPage(session, entries, rights, *m_pTracker, widgets::PagesOf(m_pTabs))),
      m_pWhy(new CWhyPage(*m_pTracker, rights, entries, server, widgets::PagesOf(m_pTabs))),
      m_pServerPage(new CServerPage(server, widgets::PagesOf(m_pTabs))),
      m_pBannerText(widgets::NewLabel("FileBannerText"_q, "overridden", this)),
      m_pBanner(widgets::New<QWidget>("FileBanner"_q, this)),
      m_pPath(widgets::New<QLineEdit>("ExportPath"_q, this, "File for all that is seen here"_q)),
      m_pFileBar(widgets::New<QWidget>("ExportRow"_q, this)),
      m_pNote(widgets::NewOutcome("ExportNote"_q, this)) {
    setObjectName("Workbench"_q);
    m_pWhy->setContentsMargins(0, kTabMargin, 0, 0);
    m_pTabs->addTab(m_pWhy, "Why"_q);
    widgets::AddScrollTab(m_pTabs, m_pUser, "User"_q);
    m_pTabs->addTab(m_pServerPage, "Server"_q);
    AddViews();
    auto* back = widgets::NewButton("FileBack"_q, "Back to live"_q, this, [this] { ShowFile(nullptr); });
    widgets::Row({{m_pBannerText, 1}, back}, m_pBanner);
    m_pBanner->hide();
    m_pNote->hide();
    AddFileBar();
    auto* column = new CLowColumn(this);
    column->setContentsMargins(0, 0, 0, 0);
    auto* parts = widgets::Column({m_pBanner, {m_pTabs, 1}, m_pFileBar, m_pNote});
    parts->setSpacing(8);
    column->addLayout(parts);
    connect(m_pServerPage, &CServerPage::OverridesChanged, m_pUser, &CUserPage::ShowOverrides);
    connect(&session, &ISessionControl::UsersChanged, this, &CWorkbench::ShowUsers);
    connect(&session, &ISessionControl::UserChanged, this, &CWorkbench::ShowUsers);
    ShowUsers();
    AddShortcuts();
    RestoreView();
}

CWorkbench::~CWorkbench() {
    SaveView();
    if (m_fileTask.joinable()) {
        m_fileTask.join();
    }
}

CEventView* CWorkbench::NewView(QTabWidget* tabs, const EventFormatPtr& format, const QString& title) {
    auto* view = new CEventView(format, widgets::PagesOf(tabs));
    view->setContentsMargins(0, kTabMargin, 0, 0);
    tabs->addTab(view, title);
    m_views.push_back(view);
    return view;
}

void CWorkbench::AddViews() {
    NewView(m_pTrafficTabs, NewTrafficFormat(), "Channel and bus"_q);
    NewView(m_pTrafficTabs, NewHttpFormat(), "HTTP"_q);
    NewView(m_pTrafficTabs, NewReportFormat(), "Reports"_q);
    NewView(m_pTrafficTabs, NewActivationFormat(), "Activation"_q);
    AddWebState(NewView(m_pTrafficTabs, NewWebFormat(), "Web"_q));
    m_pTabs->addTab(m_pTrafficTabs, "Traffic"_q);
    NewView(m_pTabs, NewLogFormat(), "Log"_q);
    NewView(m_pTabs, NewStoreFormat(), "Store"_q);
    NewView(m_pTabs, NewUrlFormat(), "URLs"_q);
}

void CWorkbench::AddWebState(CEventView* view) {
    auto* state = widgets::NewLabel("WebState"_q, "muted", view);
    auto* end = widgets::NewButton("WebEndProcess"_q, "End the page's process"_q, view, [] {
        const QList<qint64> running = host::web::CWebHost::Instance().PageProcesses();
        for (const qint64 process : running) {
            kill(pid_t(process), SIGKILL);
        }
    });
    static_cast<QVBoxLayout*>(view->layout())->insertLayout(0, widgets::Row({{state, 1}, end}));
    const auto show = [state, end] {
        state->setText(WebState());
        end->setEnabled(!host::web::CWebHost::Instance().PageProcesses().empty());
    };
    // Each change of a page is traced.
    connect(&view->Model(), &CEventModel::Changed, state, show);
    connect(end, &QPushButton::clicked, state, show);
    show();
}

// They work while the focus is in the window of the workbench.
void CWorkbench::AddShortcuts() {
    const auto add = [this](const QKeySequence& keys, const std::function<void()>& run) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, run);
    };
    for (int tab = 0; tab < m_pTabs->count() && tab < 9; ++tab) {
        add(QKeySequence(Qt::CTRL + Qt::Key_1 + tab), [this, tab] { m_pTabs->setCurrentIndex(tab); });
    }
    add(QKeySequence::Find, [this] { FocusFilter(); });
    add(QKeySequence(Qt::Key_F5), [this] { m_pUser->Refresh(); });  // the other pages are always current
}

void CWorkbench::FocusFilter() {
    static const QRegularExpression names("Filter|Search"_q);
    const auto fields = m_pTabs->findChildren<QLineEdit*>(names);
    for (QLineEdit* field : fields) {
        if (field->isVisible()) {
            field->setFocus(Qt::ShortcutFocusReason);
            field->selectAll();
            return;
        }
    }
}

void CWorkbench::AddFileBar() {
    m_pPath->setText(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) +
                     "/zrclient-workbench.json"_q);
    m_pPath->setPlaceholderText(m_pPath->accessibleName());
    auto* save = widgets::NewButton("ExportSave"_q, "Export"_q, m_pFileBar, [this] { Export(); });
    auto* open = widgets::NewButton("ExportOpen"_q, "Open export"_q, m_pFileBar, [this] { Open(); });
    widgets::Row({{m_pPath, 1}, widgets::NewFileButton("ExportChoose"_q, m_pPath), save, open}, m_pFileBar);
}

void CWorkbench::Export() {
    const auto recording = std::make_shared<workbench_export::Recording>();
    recording->timeMs = QDateTime::currentMSecsSinceEpoch();
    recording->state = m_pUser->State();
    recording->state["diagnosis"_q] = m_pWhy->State();
    for (const CEventView* view : m_views) {
        recording->lists.push_back({view->Model().Format(), view->Model().Rows()});
    }
    m_pFileBar->setEnabled(false);
    const auto missing = std::make_shared<int>(0);
    for (const QString& key : {"scenario"_q, "faults"_q, "httpFaults"_q}) {
        ++*missing;
        m_server.Ask("GET", "/v1/"_q + key, {}, this, [this, recording, missing, key](const ServerAnswer& answer) {
            const QByteArray json = QByteArray::fromStdString(answer.body.toStyledString());
            recording->state[key] = answer.error.isEmpty() ? QJsonValue(QJsonDocument::fromJson(json).object())
                                                           : QJsonValue("not known: "_q + answer.error);
            if (--*missing == 0) {
                RunFileTask([path = m_pPath->text().trimmed(), recording,
                             aliases = m_aliases] { return workbench_export::Write(path, *recording, aliases); },
                            [this] { widgets::ShowOutcome(m_pNote, "Exported, without ids, names and tokens"_q); });
            }
        });
    }
}

void CWorkbench::Open() {
    auto recording = std::make_shared<workbench_export::Recording>();
    for (const CEventView* view : m_views) {
        recording->lists.push_back({view->Model().Format(), {}});
    }
    RunFileTask([path = m_pPath->text().trimmed(), recording] { return workbench_export::Read(path, *recording); },
                [this, recording] { ShowFile(recording.get()); });
}

void CWorkbench::RunFileTask(std::function<QString()> task, std::function<void()> done) {
    if (m_fileTask.joinable()) {
        m_fileTask.join();
    }
    m_pFileBar->setEnabled(false);
    m_fileTask = std::thread([this, task = std::move(task), done = std::move(done)] {
        const auto finish = [this, done, failure = task()] {
            m_pFileBar->setEnabled(true);
            m_pNote->show();
            if (failure.isEmpty()) {
                done();
            } else {
                widgets::ShowOutcome(m_pNote, failure, widgets::EnOutcome::Bad);
            }
        };
        QMetaObject::invokeMethod(this, finish, Qt::QueuedConnection);
    });
}

// Without a file the live events are shown.
void CWorkbench::ShowFile(const workbench_export::Recording* file) {
    for (size_t view = 0; view < m_views.size(); ++view) {
        m_views[view]->ShowFile(file ? &file->lists[view].rows : nullptr);
    }
    m_pUser->ShowFile(file ? file->state : QJsonObject());
    m_pNote->hide();
    m_pBanner->setVisible(file);
    if (file) {
        m_pBannerText->setText("Shows the file %1 of %2 %3 in User, Traffic, Log, Store and URLs"_q.arg(
            m_pPath->text().trimmed(), readable::LocalTime(file->timeMs), readable::Zone()));
    }
}

void CWorkbench::Take(const TraceEvent& seen) {
    for (CEventView* view : m_views) {
        view->Model().Add(seen);
    }
    m_pTracker->Take(seen);
}

void CWorkbench::TakeLine(const LogEntry& entry) {
    for (CEventView* view : m_views) {
        view->Model().Add(entry);
    }
    m_pTracker->TakeLine(entry);
}

void CWorkbench::ShowUsers() {
    m_pWhy->ShowUsers(m_session.Users());
    m_pServerPage->ShowUsers(m_session.Users(), m_session.UserId());
}

void CWorkbench::ForgetServer() {
    m_pServerPage->ForgetServer();
    m_pWhy->ForgetServer();
}

// The user property of a field is its text.
QList<QWidget*> CWorkbench::Filters() const {
    static const QRegularExpression names("(Filter|Kind|Severity|Source|Area)$"_q);
    QList<QWidget*> filters;
    for (const CEventView* view : m_views) {
        filters += view->findChildren<QWidget*>(names);
    }
    return filters;
}

void CWorkbench::SaveView() const {
    QJsonObject saved{{"tab"_q, m_pTabs->currentIndex()}, {"traffic"_q, m_pTrafficTabs->currentIndex()}};
    const QList<QWidget*> filters = Filters();
    for (const QWidget* filter : filters) {
        saved[filter->objectName()] = filter->metaObject()->userProperty().read(filter).toString();
    }
    core::config_local::AppCfgSaveString(kViewKey, QJsonDocument(saved).toJson(QJsonDocument::Compact).toStdString());
}

void CWorkbench::RestoreView() {
    std::string text;
    core::config_local::AppCfgReadString(kViewKey, text);
    const QJsonObject saved = QJsonDocument::fromJson(QByteArray::fromStdString(text)).object();
    m_pTabs->setCurrentIndex(saved["tab"_q].toInt(kUserTab));
    m_pTrafficTabs->setCurrentIndex(saved["traffic"_q].toInt());
    const QList<QWidget*> filters = Filters();
    for (QWidget* filter : filters) {
        filter->metaObject()->userProperty().write(filter, saved[filter->objectName()].toString());
    }
}
