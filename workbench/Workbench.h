#pragma once

#include <QWidget>
#include <thread>

#include "ISessionControl.h"
#include "workbench/ControlClient.h"
#include "workbench/EventView.h"
#include "workbench/Export.h"

class CAIChatEntries;
class CPremiumRights;
class CServerPage;
class CTracker;
class CUserPage;
class CWhyPage;
class QLabel;
class QLineEdit;
class QTabWidget;

/// The developer panel of the modules. It controls the session, the server's answers, its faults and its clock, and
/// shows what the modules do and why. The arguments must outlive it.
class CWorkbench : public QWidget {
    Q_OBJECT

public:
    CWorkbench(ISessionControl& session, CAIChatEntries& entries, CPremiumRights& rights, IControlClient& server,
               QWidget* parent = nullptr);
    ~CWorkbench() override;

    CServerPage& Server() { return *m_pServerPage; }

    /// Must be called for a new or restarted server, which has none of the settings made here.
    void ForgetServer();

    /// Adds a trace event. Each view keeps the events of its format.
    void Take(const TraceEvent& seen);
    /// Adds a line of the log.
    void TakeLine(const LogEntry& entry);

    /// The values that an export must not contain.
    CRedactor& Aliases() { return m_aliases; }

private:
    CEventView* NewView(QTabWidget* tabs, const EventFormatPtr& format, const QString& title);
    void ShowUsers();
    void AddViews();
    void AddWebState(CEventView* view);
    void AddShortcuts();
    void FocusFilter();
    void AddFileBar();
    void Export();
    void Open();
    void ShowFile(const workbench_export::Recording* file);
    void RunFileTask(std::function<QString()> task, std::function<void()> done);
    QList<QWidget*> Filters() const;
    void SaveView() const;
    void RestoreView();

    ISessionControl& m_session;
    IControlClient& m_server;
    CRedactor m_aliases;
    QTabWidget* m_pTabs;
    QTabWidget* m_pTrafficTabs;
    CTracker* m_pTracker;
    CUserPage* m_pUser;
    std::vector<CEventView*> m_views;
    CWhyPage* m_pWhy;
    CServerPage* m_pServerPage;
    QLabel* m_pBannerText;
    QWidget* m_pBanner;
    QLineEdit* m_pPath;
    QWidget* m_pFileBar;  // disabled while a file is written or read
    QLabel* m_pNote;
    std::thread m_fileTask;
};
