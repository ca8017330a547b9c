#pragma once

#include <json/value.h>

#include <QPointer>
#include <string>
#include <vector>

#include "webview/IWebEngine.h"

/// A view without a browser. The test is the page and its server: it ends loads, calls handlers and follows links.
class CScriptedWebView : public IWebView {
public:
    CScriptedWebView(class CScriptedWeb& web, IWebViewOwner& owner, QWidget* parent);
    ~CScriptedWebView() override;

    /// The document of the last load is displayed, and names itself if it has the bridge; the load is good.
    void Succeed(int httpCode = 200);
    /// The load fails; the displayed document stays.
    void Fail(int httpCode = 0);
    /// A document at `url` is displayed. The load has not ended.
    void Commit(const QString& url);
    /// The bridge object of the displayed document sends its first message.
    void Greet();
    /// The page loads another document itself.
    void StartOfPage() { m_owner.LoadStarted(); }
    /// The page loads the document at `url` itself, and that is good.
    void GoTo(const QString& url);
    /// Returns whether the page may go there.
    bool Navigate(const char* url, EnWebNavigation type = EnWebNavigation::kLink, bool mainFrame = true);
    void Kill();
    /// The page asks for a window and then names its address. Returns whether it may ask.
    bool OpenPopup(const char* url, const QSize& size = QSize());
    void WantMenu(int possible);

    /// The page calls a handler. Returns the number of the call.
    int Call(const char* name, const Json::Value& params = Json::objectValue);
    /// The page calls a handler and wants no answer.
    void Notify(const char* name, const Json::Value& params = Json::objectValue);
    /// The page sends any text.
    void Post(const QString& message) { m_owner.MessageReceived(message); }

    /// The messages to the page, as JSON text without the name of the document.
    std::vector<std::string> Received() const;
    /// The name that the displayed document gave itself.
    std::string Page() const { return m_strPage; }

    const std::vector<std::string>& Scripts() const { return m_scripts; }
    const std::vector<int>& Edits() const { return m_edits; }
    const QStringList& BridgeOrigins() const { return m_load.bridgeOrigins; }
    bool IsFrozen() const { return m_bFrozen; }
    /// Number of calls that froze it.
    int FreezeCount() const { return m_nFreezes; }
    int StopCount() const { return m_nStops; }

    void Load(const WebLoad& load) override;
    void Stop() override { ++m_nStops; }
    void Run(const QString& script) override { m_scripts.push_back(script.toStdString()); }
    void Send(const QString& message) override { m_messages.push_back(message.toStdString()); }
    void SetFrozen(bool frozen) override;
    QUrl CommittedUrl() const override { return m_committed; }
    qint64 ProcessId() const override { return processId; }

    qint64 processId = 0;

private:
    CScriptedWeb& m_web;
    IWebViewOwner& m_owner;
    WebLoad m_load;
    QUrl m_committed;
    std::vector<std::string> m_scripts;
    std::vector<std::string> m_messages;
    std::vector<int> m_edits;
    std::string m_strPage;
    int m_nPages = 0;
    int m_nCalls = 0;
    int m_nStops = 0;
    int m_nFreezes = 0;
    bool m_bFrozen = false;
};

/// Web pages without a browser. A load that no test looked at (Loads) fails the test.
class CScriptedWeb : public IWebEngine {
public:
    /// The addresses of all loads, in order.
    const std::vector<std::string>& Loads();
    /// Marks all loads as looked at and clears the record.
    void Forget();
    void CheckAllLookedAt();

    /// The live views, in order of creation.
    const std::vector<CScriptedWebView*>& Views() const { return m_views; }
    /// The view that was created last. Fails the test if there is none.
    CScriptedWebView& View() const;
    /// Number of all views that were ever created.
    int MadeCount() const { return m_nMade; }
    int ForgetCount() const { return m_nForgets; }

    /// Later views cannot be created.
    void SetMissing(bool missing) { m_bMissing = missing; }

    IWebView* NewView(IWebViewOwner& owner, QWidget* parent) override;
    void ForgetData() override { ++m_nForgets; }

private:
    friend CScriptedWebView;

    std::vector<CScriptedWebView*> m_views;
    std::vector<std::string> m_loads;
    size_t m_nLookedAt = 0;
    int m_nMade = 0;
    int m_nForgets = 0;
    bool m_bMissing = false;
};
