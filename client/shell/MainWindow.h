#pragma once

#include <QMainWindow>
#include <array>

#include "AIChatEntries.h"
#include "Ads.h"
#include "FirstPaintWatcher.h"
#include "PremiumRights.h"
#include "SampleMarket.h"
#include "TabPages.h"

class CNavigation;
class CNoticeBanner;
class CPage;
class CStatusLine;
class CTitleBar;
class ISessionControl;
class QDockWidget;
class QStackedWidget;

/// The client's window: title bar, navigation, pages, status line and a dock. The first frame contains the first page
/// and the empty dock. The dock's content and the other pages are created afterwards, one in each turn of the event
/// loop. The session must outlive the window. Main thread.
class CMainWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit CMainWindow(ISessionControl& session);
    ~CMainWindow() override;

    const CStatusLine& StatusLine() const { return *m_pStatusLine; }

Q_SIGNALS:
    /// The first frame was painted.
    void Appeared();
    /// The dock's content and all pages were created.
    void Completed();

protected:
    /// Creates the content of the dock. Is called once, after the first frame.
    virtual QWidget* NewDockContent(QWidget* parent) = 0;
    /// The page at `index` of kTabPages became the current one.
    virtual void OnTabChanged(int index) = 0;

    CAIChatEntries& Entries() { return m_entries; }
    CPremiumRights& Rights() { return m_rights; }
    CNavigation& Navigation() { return *m_pNavigation; }
    /// Index of the current page in kTabPages.
    int Tab() const { return m_nTab; }
    /// Changes to the page of zrclient://page/<name> after the caller returns. Returns false if there is none.
    bool OpenPage(const QUrl& url);

    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* NewContent();
    QDockWidget* NewDock();
    void RestoreState();
    void ShowPage(int index);
    void ShowCurrentPage();
    /// Returns the page and creates it on first use.
    CPage* PageAt(int index);
    CPage* NewPage(int index);
    /// Creates one missing part and schedules the next one.
    void CreateNextLazyPart();
    void ConnectSession();
    void ShowUsers();
    void ShowEdition();

    ISessionControl& m_session;
    CAIChatEntries m_entries;
    CPremiumRights m_rights;
    CAds m_ads;
    const SampleMarket m_market = SampleMarket::Load();
    std::array<CPage*, kTabPages.size()> m_pages{};  // in the order of kTabPages; null until created
    int m_nTab = 0;
    CTitleBar* m_pTitleBar;
    CNavigation* m_pNavigation;
    CNoticeBanner* m_pBanner;
    QStackedWidget* m_pPages;
    CStatusLine* m_pStatusLine;
    QDockWidget* m_pDock;
    QWidget* m_pDockContent = nullptr;
    CFirstPaintWatcher m_firstPaint;
};
