#pragma once

#include <QWidget>

#include "ISessionControl.h"
#include "tracing/TraceEvent.h"
#include "workbench/Aliases.h"
#include "workbench/ControlClient.h"
#include "workbench/LogView.h"
#include "workbench/WireDecoder.h"

class CAIChatEntries;
class CAdBoard;
class CAdSwitches;
class CAdTab;
class CClockPanel;
class CFaultPanel;
class CPremiumRights;
class CRefreshBoard;
class CScenePanel;
class CSeenView;
class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QTabWidget;

/// The desk of those who work on the modules: the switches of the session, how the AI chat entries stand and
/// what the server will answer, the user's rights and VIP status, the ad slots, all that goes through the contract, the
/// log, and the server's faults and clock. `entries`, `rights` and `server` must outlive it.
class CWorkbench : public QWidget {
    Q_OBJECT

public:
    CWorkbench(CAIChatEntries& entries, const CPremiumRights& rights, IControlClient& server,
               QWidget* parent = nullptr);

    /// `current` is 0 if nobody is logged in. The choice in the list stays where it can.
    void ShowUsers(const std::vector<ServerUser>& users, quint64 current);
    void ShowLanguage(int languageId);
    void ShowEdition(bool velora);
    void ShowMarkets(const std::vector<int>& markets);
    /// The server is another one, or a new start of the same: it knows nothing of what was set here.
    void ForgetServer();

    /// Takes what was seen; each view keeps what is its own.
    void Take(const TraceEvent& seen);
    /// Takes a line of the log, in the same way.
    void TakeLine(const LogEntry& entry);

    /// Which circumstances of the bottom popup are overridden.
    CAdSwitches& AdSwitches();

    /// What an export must not hold.
    CAliases& Aliases() { return m_aliases; }

    /// Writes what is seen to the file. Returns why it could not; empty if it could.
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
    QWidget* NewServerTab();
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
    CRefreshBoard* m_pBoard;
    CAdBoard* m_pAds;
    CAdTab* m_pAdTab;
    QWidget* m_pTrafficTab;
    QTabWidget* m_pTrafficTabs;
    CSeenView* m_pTraffic;
    CSeenView* m_pHttp;
    CSeenView* m_pReports;
    CLogView* m_pLog;
    CSeenView* m_pStore;
    CSeenView* m_pUrls;
    CScenePanel* m_pScenes;
    CFaultPanel* m_pFaults;
    CClockPanel* m_pClock;
    QLineEdit* m_pExportPath;
    QLabel* m_pExportNote;
    CAliases m_aliases;
};
