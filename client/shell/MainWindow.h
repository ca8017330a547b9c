#pragma once

#include <QMainWindow>
#include <array>

#include "AIChatEntries.h"
#include "Ads.h"
#include "FirstFrame.h"
#include "PremiumRights.h"
#include "SampleMarket.h"
#include "TabPages.h"

class CComposition;
class CNavigation;
class CNoticeBanner;
class CPage;
class CStatusLine;
class CTitleBar;
class CWorkbench;
class QDockWidget;
class QStackedWidget;
enum class EnFocusAnswer;

/// The client's window. It is gone before the composition ends. Its first frame has all but the workbench and
/// the pages that nobody chose yet; they are made when that frame stands, a piece at a time.
class CMainWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit CMainWindow(CComposition& composition);
    ~CMainWindow() override;

    const CStatusLine& StatusLine() const { return *m_pStatusLine; }

Q_SIGNALS:
    /// The first frame stands: what takes long may begin.
    void Appeared();
    /// All that the window is made of is there.
    void Completed();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* NewContent();
    QDockWidget* NewDock();
    /// Makes the page at its first choice.
    void ShowPage(int index);
    CPage* PageAt(int index);
    CPage* NewPage(int index);
    void OfferMainFrame();
    bool HasFocus() const;
    void MakeWorkbench();
    /// Makes one thing that is still missing, and has the next one made later.
    void MakeNext();
    void JoinComposition();
    void JoinWorkbench();
    void JoinAdSwitches();
    void ShowUsers();
    void ShowEdition();
    void ShowWorkbenchUsers();
    void LearnSecrets();
    /// Goes to the page of a zrclient://page/<name>, when the caller is done; false if there is none.
    bool OpenPage(const QUrl& url);

    CComposition& m_composition;
    CAIChatEntries m_entries;
    CPremiumRights m_rights;
    CAds m_ads;
    const SampleMarket m_market = SampleMarket::Load();
    std::array<CPage*, kTabPages.size()> m_made{};  // null until made, in the order of kTabPages
    int m_nTab = 0;                                 // by its place there
    bool m_bModulesReady = false;
    EnFocusAnswer m_focusAnswer{};  // as it is, until the workbench overrides it
    CTitleBar* m_pTitleBar;
    CNavigation* m_pNavigation;
    CNoticeBanner* m_pBanner;
    QStackedWidget* m_pPages;
    CStatusLine* m_pStatusLine;
    QDockWidget* m_pDock;
    CWorkbench* m_pWorkbench = nullptr;
    CFirstFrame m_firstFrame;
};
