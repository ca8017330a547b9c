#include "workbench/Workbench.h"

#include <QComboBox>
#include <QDateTime>
#include <QDir>
#include <QFileDialog>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QStandardPaths>
#include <QVBoxLayout>
#include <QVariant>

#include "AIChatEntries.h"
#include "Theme.h"
#include "core/lang.h"
#include "core/time_date.h"
#include "ui/zr_ui_theme.h"
#include "workbench/EntryTable.h"
#include "workbench/Export.h"
#include "workbench/PanelWidgets.h"
#include "workbench/TabPages.h"
#include "workbench/TraceView.h"
#include "workbench/diagnosis/WhyPage.h"
#include "workbench/rights/RightsTab.h"
#include "workbench/server/ServerPage.h"

namespace {

constexpr int kTabMargin = 10;
constexpr int kUsersInSight = 16;
const QString kExportName = QStringLiteral("zrclient-workbench.json");

struct LanguageChoice {
    int id;
    const char* name;
};

constexpr LanguageChoice kLanguages[] = {
    {core::lang::kLanguageEnglish, "English"},
    {core::lang::kLanguageSimplifiedChinese, "简体中文"},
    {core::lang::kLanguageTraditionalChinese, "繁體中文"},
    {core::lang::kLanguageJapanese, "日本語"},
    {core::lang::kLanguageFrench, "Français"},
};

struct ThemeChoice {
    zr_ui_theme::Manager::Theme theme;
    const char* name;
};

constexpr ThemeChoice kThemes[] = {
    {zr_ui_theme::Manager::kThemeLight, "Light"},
    {zr_ui_theme::Manager::kThemeDarkBlue, "Dark blue"},
    {zr_ui_theme::Manager::kThemeBlack, "Black"},
};

struct OverrideChoice {
    EnEntryOverride value;
    const char* name;
};

constexpr OverrideChoice kOverrides[] = {
    {EnEntryOverride::None, "No override"},
    {EnEntryOverride::Open, "Force open"},
    {EnEntryOverride::Closed, "Force closed"},
};

QComboBox* NewCombo(const char* name, QWidget* parent) {
    auto* combo = new QComboBox(parent);
    combo->setObjectName(QString::fromLatin1(name));
    combo->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    return combo;
}

/// Uses the current difference of the clocks.
qint64 ToServer(qint64 localMs) {
    return localMs + core::time_date::GetSvrTimeMillis() - QDateTime::currentMSecsSinceEpoch();
}

}  // namespace

CWorkbench::CWorkbench(CAIChatEntries& entries, CPremiumRights& rights, IControlClient& server, QWidget* parent)
    : QWidget(parent),
      m_entries(entries),
      m_pUser(NewCombo("WorkbenchUser", this)),
      m_pWho(new QLabel(this)),
      m_pLogin(new QPushButton(this)),
      m_pLogout(new QPushButton(this)),
      m_pLanguage(NewCombo("WorkbenchLanguage", this)),
      m_pTheme(NewCombo("WorkbenchTheme", this)),
      m_pOverride(NewCombo("WorkbenchOverride", this)),
      m_pEdition(NewCombo("WorkbenchEdition", this)),
      m_pMarkets(new QLineEdit(this)),
      m_pMarketsNote(new QLabel(this)),
      m_pTabs(new QTabWidget(this)),
      m_pTracker(new CTracker(ToServer, this)),
      m_pWhy(new CWhyPage(*m_pTracker, rights, entries, m_decoder, server, PagesOf(m_pTabs))),
      m_pTrafficTab(new QWidget(PagesOf(m_pTabs))),
      m_pTrafficTabs(new QTabWidget(m_pTrafficTab)),
      m_pTraffic(new CTraceView(NewTrafficFormat(m_decoder), PagesOf(m_pTrafficTabs))),
      m_pHttp(new CTraceView(NewHttpFormat(), PagesOf(m_pTrafficTabs))),
      m_pReports(new CTraceView(NewReportFormat(), PagesOf(m_pTrafficTabs))),
      m_pLog(new CLogView(PagesOf(m_pTabs))),
      m_pStore(new CTraceView(NewStoreFormat(), PagesOf(m_pTabs))),
      m_pUrls(new CTraceView(NewUrlFormat(), PagesOf(m_pTabs))),
      m_pServerPage(new CServerPage(server, PagesOf(m_pTabs))),
      m_pExportPath(new QLineEdit(this)),
      m_pExportNote(new QLabel(this)) {
    setObjectName(QStringLiteral("Workbench"));
    m_pTabs->setObjectName(QStringLiteral("WorkbenchTabs"));
    m_pTabs->setDocumentMode(true);
    const auto addTab = [this](QWidget* tab, const QString& title) {
        const int index = m_pTabs->addTab(tab, QString());
        tab->setContentsMargins(0, kTabMargin, 0, 0);
        m_pTabs->setTabText(index, title);
    };
    addTab(NewSessionTab(), QStringLiteral("Session"));
    addTab(m_pWhy, QStringLiteral("Why"));
    addTab(new CRightsTab(rights, PagesOf(m_pTabs)), QStringLiteral("Rights"));
    SetUpTrafficTab();
    addTab(m_pTrafficTab, QStringLiteral("Traffic"));
    addTab(m_pLog, QStringLiteral("Log"));
    addTab(m_pStore, QStringLiteral("Store"));
    addTab(m_pUrls, QStringLiteral("URLs"));
    addTab(m_pServerPage, QStringLiteral("Server"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(10);
    layout->addWidget(m_pTabs, 1);
    layout->addWidget(NewExportRow());
    connect(&entries, &CAIChatEntries::Changed, this, &CWorkbench::ShowOverride);
    ShowUserTexts();
    ShowTheme();
    ShowOverride();
    ShowEditionTexts();
    theme::OnThemeChange(this, [this] { ShowTheme(); });
}

QWidget* CWorkbench::NewSessionTab() {
    auto* tab = new QWidget(PagesOf(m_pTabs));
    tab->setObjectName(QStringLiteral("SessionTab"));
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(8);
    AddUserRow(grid);
    AddLanguageRow(grid);
    AddThemeRow(grid);
    AddOverrideRow(grid);
    AddEditionRow(grid);
    AddMarketsRow(grid);
    auto* layout = new QVBoxLayout(tab);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(10);
    layout->addLayout(grid);
    layout->addWidget(panel::NewTitle(QStringLiteral("AI chat entries per scene"), tab, "section"));
    layout->addWidget(new CEntryTable(m_entries, tab));
    layout->addStretch(1);
    return tab;
}

void CWorkbench::SetUpTrafficTab() {
    m_pTrafficTabs->setObjectName(QStringLiteral("TrafficTabs"));
    m_pTrafficTabs->setDocumentMode(true);
    const auto addTab = [this](QWidget* tab, const QString& title) {
        const int index = m_pTrafficTabs->addTab(tab, QString());
        tab->setContentsMargins(0, kTabMargin, 0, 0);
        m_pTrafficTabs->setTabText(index, title);
    };
    addTab(m_pTraffic, QStringLiteral("Channel and bus"));
    addTab(m_pHttp, QStringLiteral("HTTP"));
    addTab(m_pReports, QStringLiteral("Reports"));
    m_pTrafficTab->setObjectName(QStringLiteral("TrafficTab"));
    auto* layout = new QVBoxLayout(m_pTrafficTab);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pTrafficTabs);
}

QWidget* CWorkbench::NewExportRow() {
    auto* row = new QWidget(this);
    row->setObjectName(QStringLiteral("ExportRow"));
    m_pExportPath->setObjectName(QStringLiteral("ExportPath"));
    m_pExportPath->setText(
        QDir(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)).filePath(kExportName));
    m_pExportNote->setObjectName(QStringLiteral("ExportNote"));
    m_pExportNote->setTextFormat(Qt::PlainText);
    m_pExportNote->setProperty("role", QStringLiteral("muted"));
    m_pExportNote->hide();
    auto* choose = new QPushButton(QStringLiteral("…"), row);
    choose->setObjectName(QStringLiteral("ExportChoose"));
    auto* save = new QPushButton(row);
    save->setObjectName(QStringLiteral("ExportSave"));
    save->setText(QStringLiteral("Export"));
    m_pExportPath->setPlaceholderText(QStringLiteral("File for all that is seen here"));
    m_pExportPath->setToolTip(QStringLiteral("File for all that is seen here"));
    choose->setToolTip(QStringLiteral("Choose the file"));
    auto* line = new QHBoxLayout;
    line->addWidget(m_pExportPath, 1);
    line->addWidget(choose);
    line->addWidget(save);
    auto* layout = new QVBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addLayout(line);
    layout->addWidget(m_pExportNote);
    connect(save, &QPushButton::clicked, this, &CWorkbench::Export);
    connect(choose, &QPushButton::clicked, this, [this] {
        const QString path =
            QFileDialog::getSaveFileName(this, QStringLiteral("Choose the file"), m_pExportPath->text());
        if (!path.isEmpty()) {
            m_pExportPath->setText(path);
        }
    });
    return row;
}

QString CWorkbench::ExportTo(const QString& path) const {
    return workbench_export::Write(
        path, workbench_export::Json({&m_pTraffic->Model(), &m_pHttp->Model(), &m_pReports->Model(), &m_pStore->Model(),
                                      &m_pUrls->Model()},
                                     m_pLog->Model(), m_aliases));
}

void CWorkbench::Export() {
    const QString failure = ExportTo(m_pExportPath->text().trimmed());
    m_pExportNote->setText(failure.isEmpty() ? QStringLiteral("Exported, without ids, names and tokens")
                                             : QStringLiteral("Can't be written: %1").arg(failure));
    m_pExportNote->show();
}

void CWorkbench::Take(const TraceEvent& seen) {
    m_pTraffic->Model().Add(seen);
    m_pHttp->Model().Add(seen);
    m_pReports->Model().Add(seen);
    m_pStore->Model().Add(seen);
    m_pUrls->Model().Add(seen);
    m_pTracker->Take(seen);
}

void CWorkbench::TakeLine(const LogEntry& entry) {
    Log().Add(entry);
    m_pTracker->TakeLine(entry);
}

void CWorkbench::AddUserRow(QGridLayout* grid) {
    m_pWho->setObjectName(QStringLiteral("WorkbenchWho"));
    m_pUser->setMaxVisibleItems(kUsersInSight);
    m_pWho->setTextFormat(Qt::PlainText);
    m_pWho->setProperty("role", QStringLiteral("muted"));
    m_pLogin->setObjectName(QStringLiteral("WorkbenchLogin"));
    m_pLogout->setObjectName(QStringLiteral("WorkbenchLogout"));
    m_pLogin->setText(QStringLiteral("Log in"));
    m_pLogout->setText(QStringLiteral("Log out"));
    grid->addWidget(panel::NewTitle(QStringLiteral("User"), this), 0, 0);
    grid->addWidget(m_pUser, 0, 1);
    grid->addWidget(m_pLogin, 0, 2);
    grid->addWidget(m_pLogout, 0, 3);
    grid->addWidget(m_pWho, 1, 1, 1, 3);
    grid->setColumnStretch(1, 1);
    connect(m_pLogin, &QPushButton::clicked, this,
            [this] { Q_EMIT LoginWanted(m_pUser->currentData().toULongLong()); });
    connect(m_pLogout, &QPushButton::clicked, this, &CWorkbench::LogoutWanted);
}

void CWorkbench::AddLanguageRow(QGridLayout* grid) {
    for (const LanguageChoice& language : kLanguages) {
        m_pLanguage->addItem(QString::fromUtf8(language.name), language.id);
    }
    grid->addWidget(panel::NewTitle(QStringLiteral("Language"), this), 2, 0);
    grid->addWidget(m_pLanguage, 2, 1, 1, 3);
    connect(m_pLanguage, qOverload<int>(&QComboBox::currentIndexChanged), this,
            [this] { Q_EMIT LanguageWanted(m_pLanguage->currentData().toInt()); });
}

void CWorkbench::AddThemeRow(QGridLayout* grid) {
    for (const ThemeChoice& choice : kThemes) {
        m_pTheme->addItem(QString(), int(choice.theme));
    }
    grid->addWidget(panel::NewTitle(QStringLiteral("Theme"), this), 3, 0);
    grid->addWidget(m_pTheme, 3, 1, 1, 3);
    connect(m_pTheme, qOverload<int>(&QComboBox::currentIndexChanged), this,
            [this] { Q_EMIT ThemeWanted(m_pTheme->currentData().toInt()); });
}

void CWorkbench::AddOverrideRow(QGridLayout* grid) {
    for (const OverrideChoice& choice : kOverrides) {
        m_pOverride->addItem(QString(), int(choice.value));
    }
    grid->addWidget(panel::NewTitle(QStringLiteral("Override"), this), 4, 0);
    grid->addWidget(m_pOverride, 4, 1, 1, 3);
    connect(m_pOverride, qOverload<int>(&QComboBox::currentIndexChanged), this,
            [this] { m_entries.SetOverride(EnEntryOverride(m_pOverride->currentData().toInt())); });
}

void CWorkbench::AddEditionRow(QGridLayout* grid) {
    m_pEdition->addItem(QString(), false);
    m_pEdition->addItem(QString(), true);
    grid->addWidget(panel::NewTitle(QStringLiteral("Edition"), this), 5, 0);
    grid->addWidget(m_pEdition, 5, 1, 1, 3);
    connect(m_pEdition, qOverload<int>(&QComboBox::currentIndexChanged), this,
            [this] { Q_EMIT EditionWanted(m_pEdition->currentData().toBool()); });
}

void CWorkbench::AddMarketsRow(QGridLayout* grid) {
    m_pMarkets->setObjectName(QStringLiteral("WorkbenchMarkets"));
    m_pMarketsNote->setObjectName(QStringLiteral("WorkbenchMarketsNote"));
    m_pMarketsNote->setTextFormat(Qt::PlainText);
    m_pMarketsNote->setProperty("role", QStringLiteral("muted"));
    m_pMarkets->setPlaceholderText(QStringLiteral("Numbers, the leading one first, as 1 2 5"));
    auto* apply = new QPushButton(this);
    apply->setObjectName(QStringLiteral("WorkbenchMarketsApply"));
    apply->setText(QStringLiteral("Apply"));
    grid->addWidget(panel::NewTitle(QStringLiteral("Markets"), this), 6, 0);
    grid->addWidget(m_pMarkets, 6, 1);
    grid->addWidget(apply, 6, 2, 1, 2);
    grid->addWidget(m_pMarketsNote, 7, 1, 1, 3);
    m_pMarketsNote->hide();
    connect(apply, &QPushButton::clicked, this, &CWorkbench::AskMarkets);
    connect(m_pMarkets, &QLineEdit::returnPressed, this, &CWorkbench::AskMarkets);
}

void CWorkbench::AskMarkets() {
    static const QRegularExpression separators(QStringLiteral("[\\s,;]+"));
    std::vector<int> markets;
    const QStringList words = m_pMarkets->text().split(separators, Qt::SkipEmptyParts);
    for (const QString& word : words) {
        bool isNumber = false;
        markets.push_back(word.toInt(&isNumber));
        if (!isNumber || markets.back() < 0) {
            m_pMarketsNote->setText(QStringLiteral("No market numbers: %1").arg(word));
            m_pMarketsNote->show();
            return;
        }
    }
    Q_EMIT MarketsWanted(markets);
    m_pMarketsNote->setText(QStringLiteral("In force until the next login"));
    m_pMarketsNote->show();
}

void CWorkbench::ShowMarkets(const std::vector<int>& markets) {
    QStringList words;
    for (const int market : markets) {
        words << QString::number(market);
    }
    m_pMarkets->setText(words.join(QLatin1Char(' ')));
    m_pMarketsNote->hide();
}

void CWorkbench::ShowEdition(bool velora) {
    const QSignalBlocker blocker(m_pEdition);
    m_pEdition->setCurrentIndex(velora ? 1 : 0);
}

void CWorkbench::ShowEditionTexts() {
    m_pEdition->setItemText(0, QStringLiteral("Kestrel"));
    m_pEdition->setItemText(1, QStringLiteral("Velora"));
}

void CWorkbench::ForgetServer() {
    m_pServerPage->ForgetServer();
    m_pWhy->ForgetServer();
}

CPopupOverrides& CWorkbench::PopupOverrides() {
    return m_pServerPage->Overrides();
}

void CWorkbench::ShowUsers(const std::vector<ServerUser>& users, quint64 current) {
    m_users = users;
    m_pWhy->ShowUsers(users);
    // A login outside the workbench selects that user. A refreshed list keeps the selection.
    const QVariant chosen = current != 0 && current != m_nCurrent ? QVariant(current) : m_pUser->currentData();
    m_nCurrent = current;
    const QSignalBlocker blocker(m_pUser);
    m_pUser->clear();
    for (const ServerUser& user : users) {
        m_pUser->addItem(QStringLiteral("%1  %2").arg(user.name).arg(user.id), user.id);
    }
    m_pUser->setCurrentIndex(std::max(0, m_pUser->findData(chosen)));
    m_pServerPage->ShowUsers(users, current);
    ShowUserTexts();
}

void CWorkbench::ShowUserTexts() {
    m_pLogin->setEnabled(!m_users.empty());
    m_pLogout->setEnabled(m_nCurrent != 0);
    if (m_nCurrent == 0) {
        m_pWho->setText(QStringLiteral("Nobody is logged in"));
        return;
    }
    QString name = QString::number(m_nCurrent);
    for (const ServerUser& user : m_users) {
        if (user.id == m_nCurrent) {
            name = user.name;
        }
    }
    m_pWho->setText(QStringLiteral("Logged in: %1 (%2)").arg(name, QString::number(m_nCurrent)));
}

void CWorkbench::ShowLanguage(int languageId) {
    const QSignalBlocker blocker(m_pLanguage);
    m_pLanguage->setCurrentIndex(std::max(0, m_pLanguage->findData(languageId)));  // any other number is English
}

void CWorkbench::ShowTheme() {
    const QSignalBlocker blocker(m_pTheme);
    for (int index = 0; index < m_pTheme->count(); ++index) {
        m_pTheme->setItemText(index, QString::fromUtf8(kThemes[index].name));
    }
    m_pTheme->setCurrentIndex(m_pTheme->findData(int(zr_ui_theme::Manager::instance()->getTheme())));
}

void CWorkbench::ShowOverride() {
    const QSignalBlocker blocker(m_pOverride);
    for (int index = 0; index < m_pOverride->count(); ++index) {
        m_pOverride->setItemText(index, QString::fromUtf8(kOverrides[index].name));
    }
    m_pOverride->setCurrentIndex(m_pOverride->findData(int(m_entries.Override())));
    m_pOverride->setEnabled(m_entries.HasModule());
}
