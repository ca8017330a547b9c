#include "workbench/Workbench.h"

#include <signal.h>

#include <QDateTime>
#include <QDir>
#include <QFileDialog>
#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QStandardPaths>
#include <QVBoxLayout>

#include "Theme.h"
#include "core/config_local.h"
#include "core/time_date.h"
#include "framework/JsonText.h"
#include "webview/WebHost.h"
#include "workbench/TabPages.h"
#include "workbench/TimeText.h"
#include "workbench/UserPage.h"
#include "workbench/diagnosis/LogTable.h"
#include "workbench/diagnosis/Tracker.h"
#include "workbench/diagnosis/WhyPage.h"
#include "workbench/server/PopupOverrides.h"
#include "workbench/server/ServerPage.h"

namespace {

constexpr int kUserTab = 1;  // current at the first start
constexpr int kTabMargin = 10;
constexpr int kMaxStateMs = 2'000;
constexpr const char* kViewKey = "Client_Workbench";
const QString kExportName = QStringLiteral("zrclient-workbench.json");

/// The parts of an export's state that the server knows.
constexpr std::pair<const char*, const char*> kServerState[] = {
    {"scenario", "/v1/scenario"}, {"faults", "/v1/faults"}, {"httpFaults", "/v1/httpFaults"}};

/// Uses the current difference of the clocks.
qint64 ToServer(qint64 localMs) {
    return localMs + core::time_date::GetSvrTimeMillis() - QDateTime::currentMSecsSinceEpoch();
}

QTabWidget* NewTabs(const char* name, QWidget* parent) {
    auto* tabs = new QTabWidget(parent);
    tabs->setObjectName(QString::fromLatin1(name));
    tabs->setDocumentMode(true);
    tabs->setUsesScrollButtons(true);
    return tabs;
}

QPushButton* NewButton(const char* name, const QString& text, QWidget* parent) {
    auto* button = new QPushButton(text, parent);
    button->setObjectName(QString::fromLatin1(name));
    return button;
}

}  // namespace

CWorkbench::CWorkbench(CAIChatEntries& entries, CPremiumRights& rights, IControlClient& server, QWidget* parent)
    : QWidget(parent),
      m_server(server),
      m_pTabs(NewTabs("WorkbenchTabs", this)),
      m_pTrafficTabs(NewTabs("TrafficTabs", PagesOf(m_pTabs))),
      m_pUser(new CUserPage(entries, rights, m_decoder, PagesOf(m_pTabs))),
      m_pTracker(new CTracker(ToServer, this)),
      m_pWhy(new CWhyPage(*m_pTracker, rights, entries, m_decoder, server, PagesOf(m_pTabs))),
      m_pServerPage(new CServerPage(server, PagesOf(m_pTabs))),
      m_pPath(new QLineEdit(this)),
      m_pNote(new QLabel(this)),
      m_pBannerText(new QLabel(this)),
      m_pBanner(NewFileBanner()) {
    setObjectName(QStringLiteral("Workbench"));
    m_pTabs->addTab(m_pWhy, QStringLiteral("Why"));
    AddScrollTab(m_pTabs, m_pUser, QStringLiteral("User"));
    m_pTabs->addTab(m_pServerPage, QStringLiteral("Server"));
    AddTrafficTab();
    m_pLog = NewView(m_pTabs, NewLogFormat(log_table::IsExpectedError), "Log");
    NewView(m_pTabs, NewStoreFormat(), "Store");
    NewView(m_pTabs, NewUrlFormat(), "URLs");
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(10);
    layout->addWidget(m_pBanner);
    layout->addWidget(m_pTabs, 1);
    layout->addWidget(NewExportRow());
    for (QTabWidget* tabs : {m_pTabs, m_pTrafficTabs}) {
        for (int tab = 0; tab < tabs->count(); ++tab) {
            tabs->widget(tab)->setContentsMargins(0, kTabMargin, 0, 0);
        }
    }
    m_pUser->SetOverrides([this] { return PopupOverrides().Overridden(); });
    connect(&PopupOverrides(), &CPopupOverrides::OverridesChanged, m_pUser, &CUserPage::Refresh);
    AddShortcuts();
    m_pTabs->setCurrentIndex(kUserTab);
    RestoreView();
}

CWorkbench::~CWorkbench() {
    SaveView();
    if (m_fileTask.joinable()) {
        m_fileTask.join();
    }
}

CEventView* CWorkbench::NewView(QTabWidget* tabs, std::unique_ptr<IEventFormat> format, const char* title) {
    auto* view = new CEventView(std::move(format), PagesOf(tabs));
    tabs->addTab(view, QString::fromLatin1(title));
    m_views.push_back(view);
    return view;
}

void CWorkbench::AddTrafficTab() {
    NewView(m_pTrafficTabs, NewTrafficFormat(m_decoder), "Channel and bus");
    NewView(m_pTrafficTabs, NewHttpFormat(), "HTTP");
    NewView(m_pTrafficTabs, NewReportFormat(), "Reports");
    NewView(m_pTrafficTabs, NewActivationFormat(m_decoder), "Activation");
    AddWebState(NewView(m_pTrafficTabs, NewWebFormat(), "Web"));
    m_pTabs->addTab(m_pTrafficTabs, QStringLiteral("Traffic"));
}

void CWorkbench::AddWebState(CEventView* view) {
    auto* state = new QLabel(view);
    state->setObjectName(QStringLiteral("WebState"));
    state->setProperty("role", QStringLiteral("muted"));
    state->setWordWrap(true);
    auto* end = NewButton("WebEndProcess", QStringLiteral("End the page's process"), view);
    auto* row = new QHBoxLayout;
    row->addWidget(state, 1);
    row->addWidget(end);
    static_cast<QVBoxLayout*>(view->layout())->insertLayout(0, row);
    const auto show = [state, end] {
        const auto& web = host::web::CWebHost::Instance();
        QStringList processes;
        const auto running = web.PageProcesses();
        for (const qint64 process : running) {
            processes << QString::number(process);
        }
        state->setText(web.ViewCount() == 0
                           ? QStringLiteral("The web engine displays no page")
                           : QStringLiteral("Pages: %1, windows: %2, processes: %3")
                                 .arg(web.ViewCount())
                                 .arg(web.WindowCount())
                                 .arg(processes.isEmpty() ? QStringLiteral("none") : processes.join(QLatin1Char(' '))));
        end->setEnabled(!processes.isEmpty());
    };
    // Each change of a page is traced.
    connect(&view->Model(), &CEventModel::Changed, state, show);
    connect(end, &QPushButton::clicked, state, [show] {
        const auto running = host::web::CWebHost::Instance().PageProcesses();
        for (const qint64 process : running) {
            kill(pid_t(process), SIGKILL);
        }
        show();
    });
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
    add(QKeySequence::Find, [this] {
        const auto fields = m_pTabs->currentWidget()->findChildren<QLineEdit*>();
        for (auto* field : fields) {
            const bool isFilter = field->objectName().contains(QLatin1String("Filter")) ||
                                  field->objectName().contains(QLatin1String("Search"));
            if (isFilter && field->isVisible()) {
                field->setFocus(Qt::ShortcutFocusReason);
                field->selectAll();
                return;
            }
        }
    });
    // The page offers an operation for it, or has nothing to read again.
    add(QKeySequence(Qt::Key_F5), [this] {
        QWidget* page = CurrentPage();
        if (page->metaObject()->indexOfMethod("Refresh()") >= 0) {
            QMetaObject::invokeMethod(page, "Refresh");
        }
    });
}

QWidget* CWorkbench::CurrentPage() const {
    auto* area = qobject_cast<QScrollArea*>(m_pTabs->currentWidget());
    return area ? area->widget() : m_pTabs->currentWidget();
}

QWidget* CWorkbench::NewExportRow() {
    auto* row = new QWidget(this);
    row->setObjectName(QStringLiteral("ExportRow"));
    m_pPath->setObjectName(QStringLiteral("ExportPath"));
    m_pPath->setText(QDir(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)).filePath(kExportName));
    m_pPath->setPlaceholderText(QStringLiteral("File for all that is seen here"));
    m_pPath->setAccessibleName(m_pPath->placeholderText());
    m_pNote->setObjectName(QStringLiteral("ExportNote"));
    m_pNote->setTextFormat(Qt::PlainText);
    m_pNote->setWordWrap(true);
    m_pNote->hide();
    auto* choose = NewButton("ExportChoose", QStringLiteral("…"), row);
    choose->setAccessibleName(QStringLiteral("Choose the file"));
    choose->setToolTip(QStringLiteral("Choose the file"));
    m_pExport = NewButton("ExportSave", QStringLiteral("Export"), row);
    m_pOpen = NewButton("ExportOpen", QStringLiteral("Open export"), row);
    auto* line = new QHBoxLayout;
    line->addWidget(m_pPath, 1);
    line->addWidget(choose);
    line->addWidget(m_pExport);
    line->addWidget(m_pOpen);
    auto* layout = new QVBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addLayout(line);
    layout->addWidget(m_pNote);
    connect(m_pExport, &QPushButton::clicked, this, &CWorkbench::Export);
    connect(m_pOpen, &QPushButton::clicked, this, &CWorkbench::Open);
    connect(choose, &QPushButton::clicked, this, [this] {
        QFileDialog dialog(this, QStringLiteral("Choose the file"), m_pPath->text());
        dialog.setOption(QFileDialog::DontConfirmOverwrite);
        if (dialog.exec() == QDialog::Accepted) {
            m_pPath->setText(dialog.selectedFiles().value(0));
        }
    });
    return row;
}

QWidget* CWorkbench::NewFileBanner() {
    auto* banner = new QWidget(this);
    banner->setObjectName(QStringLiteral("FileBanner"));
    m_pBannerText->setObjectName(QStringLiteral("FileBannerText"));
    m_pBannerText->setProperty("role", QStringLiteral("overridden"));
    m_pBannerText->setTextFormat(Qt::PlainText);
    m_pBannerText->setWordWrap(true);
    auto* back = NewButton("FileBack", QStringLiteral("Back to live"), banner);
    auto* row = new QHBoxLayout(banner);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_pBannerText, 1);
    row->addWidget(back);
    connect(back, &QPushButton::clicked, this, &CWorkbench::ShowLive);
    banner->hide();
    return banner;
}

QString CWorkbench::ChosenFile() const {
    return m_pPath->text().trimmed();
}

void CWorkbench::Export() {
    m_recording = {};
    m_recording.timeMs = QDateTime::currentMSecsSinceEpoch();
    m_recording.state = m_pUser->State();
    m_recording.state[QStringLiteral("diagnosis")] = m_pWhy->State();
    for (const CEventView* view : m_views) {
        m_recording.lists.push_back(workbench_export::ListOf(view->Model()));
    }
    m_pExport->setEnabled(false);
    m_pOpen->setEnabled(false);
    AskState();
}

// A server that does not answer delays the export by two seconds only.
void CWorkbench::AskState() {
    m_nAnswers = int(std::size(kServerState));
    auto* context = new QObject(this);
    const auto write = [this, context] {
        context->deleteLater();
        m_nAnswers = -1;
        WriteRecording();
    };
    QTimer::singleShot(kMaxStateMs, context, [this, write] {
        if (m_nAnswers > 0) {
            write();
        }
    });
    for (const auto& [key, path] : kServerState) {
        m_server.Ask(
            "GET", QString::fromLatin1(path), QByteArray(), context, [this, key = key, write](const auto& got) {
                if (m_nAnswers <= 0) {
                    return;
                }
                const QByteArray json = QByteArray::fromStdString(got.body.toStyledString());
                m_recording.state[QLatin1String(key)] = got.error.isEmpty()
                                                            ? QJsonValue(QJsonDocument::fromJson(json).object())
                                                            : QJsonValue(QStringLiteral("not known: ") + got.error);
                if (--m_nAnswers == 0) {
                    write();
                }
            });
    }
}

void CWorkbench::WriteRecording() {
    RunFileTask([path = ChosenFile(), recording = std::exchange(m_recording, {}),
                 aliases = m_aliases] { return workbench_export::Write(path, recording, aliases); },
                [this] { ShowNote(QStringLiteral("Exported, without ids, names and tokens"), true); });
}

void CWorkbench::Open() {
    auto recording = std::make_shared<workbench_export::Recording>();
    for (const CEventView* view : m_views) {
        recording->lists.push_back(workbench_export::ListOf(view->Model()));
        recording->lists.back().rows.clear();
    }
    RunFileTask([path = ChosenFile(), recording] { return workbench_export::Read(path, *recording); },
                [this, recording] { ShowFile(*recording); });
}

void CWorkbench::RunFileTask(std::function<QString()> task, std::function<void()> done) {
    if (m_fileTask.joinable()) {
        m_fileTask.join();
    }
    m_pExport->setEnabled(false);
    m_pOpen->setEnabled(false);
    m_fileTask = std::thread([this, task = std::move(task), done = std::move(done)] {
        const QString failure = task();
        QMetaObject::invokeMethod(
            this,
            [this, failure, done] {
                m_pExport->setEnabled(true);
                m_pOpen->setEnabled(true);
                if (failure.isEmpty()) {
                    done();
                } else {
                    ShowNote(failure, false);
                }
                Q_EMIT FileDone(failure);
            },
            Qt::QueuedConnection);
    });
}

void CWorkbench::ShowNote(const QString& text, bool good) {
    m_pNote->setText(text);
    m_pNote->setProperty("good", good);
    theme::Repolish(m_pNote);
    m_pNote->show();
}

void CWorkbench::ShowFile(const workbench_export::Recording& recording) {
    for (size_t view = 0; view < m_views.size(); ++view) {
        m_views[view]->ShowFile(recording.lists[view].rows);
    }
    m_pNote->hide();
    m_pUser->ShowFile(recording.state);
    m_pBannerText->setText(QStringLiteral("Shows the file %1 of %2 %3 in User, Traffic, Log, Store and URLs")
                               .arg(ChosenFile(), time_text::Local(recording.timeMs), time_text::Zone()));
    m_pBanner->show();
}

void CWorkbench::ShowLive() {
    for (CEventView* view : m_views) {
        view->ShowLive();
    }
    m_pUser->ShowLive();
    m_pBanner->hide();
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
    m_pUser->TakeLine(entry);
    m_pTracker->TakeLine(entry);
}

void CWorkbench::ShowUsers(const std::vector<ServerUser>& users, quint64 current) {
    m_pUser->ShowUsers(users, current);
    m_pWhy->ShowUsers(users);
    m_pServerPage->ShowUsers(users, current);
}

void CWorkbench::ForgetServer() {
    m_pServerPage->ForgetServer();
    m_pWhy->ForgetServer();
}

CPopupOverrides& CWorkbench::PopupOverrides() {
    return m_pServerPage->Overrides();
}

void CWorkbench::SaveView() const {
    QJsonObject filters;
    for (const CEventView* view : m_views) {
        filters[view->Model().Format().Name()] = view->Filters();
    }
    const QJsonObject saved{{QStringLiteral("tab"), m_pTabs->tabText(m_pTabs->currentIndex())},
                            {QStringLiteral("traffic"), m_pTrafficTabs->tabText(m_pTrafficTabs->currentIndex())},
                            {QStringLiteral("filters"), filters}};
    core::config_local::AppCfgSaveString(kViewKey, QJsonDocument(saved).toJson(QJsonDocument::Compact).toStdString());
}

void CWorkbench::RestoreView() {
    std::string text;
    std::string reason;
    // The toolkit's reader accepts what is not JSON.
    if (!core::config_local::AppCfgReadString(kViewKey, text) || !host::ParseJson(text, reason)) {
        return;
    }
    const QJsonObject saved = QJsonDocument::fromJson(QByteArray::fromStdString(text)).object();
    const std::pair<QTabWidget*, const char*> rows[] = {{m_pTabs, "tab"}, {m_pTrafficTabs, "traffic"}};
    for (const auto& [tabs, key] : rows) {
        for (int tab = 0; tab < tabs->count(); ++tab) {
            if (tabs->tabText(tab) == saved[QLatin1String(key)].toString()) {
                tabs->setCurrentIndex(tab);
            }
        }
    }
    const QJsonObject filters = saved[QStringLiteral("filters")].toObject();
    for (CEventView* view : m_views) {
        view->SetFilters(filters[view->Model().Format().Name()].toObject());
    }
}
