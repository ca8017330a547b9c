#pragma once

#include <QMainWindow>

#include "AIChatEntries.h"
#include "PremiumRights.h"

class CComposition;
class CNavigation;
class CNoticeBanner;
class CStatusLine;
class CTitleBar;
class CWorkbench;
class QStackedWidget;

/// The client's window. It is gone before the composition ends.
class CMainWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit CMainWindow(CComposition& composition);
    ~CMainWindow() override;

    const CStatusLine& StatusLine() const { return *m_pStatusLine; }

private:
    QWidget* NewPages();
    void JoinComposition();
    void JoinWorkbench();
    void ShowUsers();
    void ShowEdition();
    void LearnSecrets();
    /// Goes to the page of a zrclient://page/<name>; false if there is none.
    bool OpenPage(const QUrl& url);

    CComposition& m_composition;
    CAIChatEntries m_entries;
    CPremiumRights m_rights;
    CTitleBar* m_pTitleBar;
    CNavigation* m_pNavigation;
    CNoticeBanner* m_pBanner;
    QStackedWidget* m_pPages;
    CStatusLine* m_pStatusLine;
    CWorkbench* m_pWorkbench;
};
