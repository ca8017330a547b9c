#pragma once

#include <QWidget>

#include "ISessionControl.h"
#include "tracing/TraceEvent.h"
#include "workbench/ControlClient.h"
#include "workbench/LogView.h"
#include "workbench/Redactor.h"
#include "workbench/WireDecoder.h"

class CAIChatEntries;
class CPopupOverrides;
class CPremiumRights;
class CServerPage;
class CTraceView;
class CTracker;
class CWhyPage;
class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QTabWidget;

/// The developer panel of the modules. It controls the session, the server's answers, its faults and its clock. It
/// shows the AI chat entries, rights, ad slots, recorded traffic and the log. `entries`, `rights` and `server` must
/// outlive it.
class CWorkbench : public QWidget {
    Q_OBJECT

public:
    CWorkbench(CAIChatEntries& entries, CPremiumRights& rights, IControlClient& server, QWidget* parent = nullptr);

    /// `current` is 0 if no user is logged in. The selection is kept if possible.
    void ShowUsers(const std::vector<ServerUser>& users, quint64 current);
    void ShowLanguage(int languageId);
    void ShowEdition(bool velora);
    void ShowMarkets(const std::vector<int>& markets);
    /// Must be called for a new or restarted server, which has none of the settings made here.
    void ForgetServer();

    /// Adds a trace event. Each view keeps the events of its format.
    void Take(const TraceEvent& seen);
    /// Adds a line of the log.
    void TakeLine(const LogEntry& entry);

    /// The overrides of the bottom popup's display conditions.
    CPopupOverrides& PopupOverrides();

    /// The values that an export must not contain.
    CRedactor& Aliases() { return m_aliases; }

    /// Writes the recorded entries to the file. Returns the reason of a failure, or an empty text.
    QString ExportTo(const QString& path) const;

    CLogModel& Log() { return m_pLog->Model(); }

Q_SIGNALS:
    void LoginWanted(quint64 userId);
    void LogoutWanted();
    void LanguageWanted(int languageId);
    void ThemeWanted(int number);
    void EditionWanted(bool velora);
    void MarketsWanted(const std::vector<int>& markets);

private:
    void AddUserRow(QGridLayout* grid);
    void AddLanguageRow(QGridLayout* grid);
    void AddThemeRow(QGridLayout* grid);
    void AddOverrideRow(QGridLayout* grid);
    void AddEditionRow(QGridLayout* grid);
    void AddMarketsRow(QGridLayout* grid);
    QWidget* NewSessionTab();
    void SetUpTrafficTab();
    QWidget* NewExportRow();
    void AskMarkets();
    void Export();
    void ShowEditionTexts();
    void ShowUserTexts();
    void ShowTheme();
    void ShowOverride();

    CAIChatEntries& m_entries;
    std::vector<ServerUser> m_users;
    quint64 m_nCurrent = 0;
    QComboBox* m_pUser;
    QLabel* m_pWho;
    QPushButton* m_pLogin;
    QPushButton* m_pLogout;
    QComboBox* m_pLanguage;
    QComboBox* m_pTheme;
    QComboBox* m_pOverride;
    QComboBox* m_pEdition;
    QLineEdit* m_pMarkets;
    QLabel* m_pMarketsNote;
    QTabWidget* m_pTabs;
    CWireDecoder m_decoder;
    CTracker* m_pTracker;
    CWhyPage* m_pWhy;
    QWidget* m_pTrafficTab;
    QTabWidget* m_pTrafficTabs;
    CTraceView* m_pTraffic;
    CTraceView* m_pHttp;
    CTraceView* m_pReports;
    CLogView* m_pLog;
    CTraceView* m_pStore;
    CTraceView* m_pUrls;
    CServerPage* m_pServerPage;
    QLineEdit* m_pExportPath;
    QLabel* m_pExportNote;
    CRedactor m_aliases;
};
