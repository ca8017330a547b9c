#pragma once

#include <QTimer>
#include <memory>

#include "WebPage.h"
#include "webview/IWebEngine.h"

class QWebChannel;
class QWebEngineProfile;
class QWebEngineView;

/// The end of the bridge that the transport script calls.
class CBridgePort : public QObject {
    Q_OBJECT

public:
    CBridgePort(IWebViewOwner& owner, QObject* parent) : QObject(parent), m_owner(owner) {}

    Q_INVOKABLE void post(const QString& text) { m_owner.MessageReceived(text); }

Q_SIGNALS:
    void message(const QString& text);

private:
    IWebViewOwner& m_owner;
};

/// A page of the browser engine.
class CWebView : public IWebView {
public:
    CWebView(IWebViewOwner& owner, std::shared_ptr<QWebEngineProfile> profile, QWidget* parent);
    ~CWebView() override;

    void Load(const WebLoad& load) override;
    void Stop() override;
    void Run(const QString& script) override;
    void Send(const QString& message) override;
    void SetFrozen(bool frozen) override;
    QUrl CommittedUrl() const override;
    qint64 ProcessId() const override;

private:
    void Begin();
    void OnLoadStarted();
    void OnLoadFinished(bool success);

    IWebViewOwner& m_owner;
    const std::shared_ptr<QWebEngineProfile> m_pProfile;  // its pages are deleted before it
    QWebEngineView* const m_pView;
    CWebPage* const m_pPage;
    CBridgePort* const m_pPort;
    QWebChannel* const m_pChannel;
    QUrl m_next;  // loaded when the older load has stopped and the empty document is displayed
    QTimer m_stopLimit;
    bool m_bBlank = false;
    bool m_bStopping = false;
    bool m_bRunning = false;  // until the engine reports an end
    bool m_bStarted = false;  // the engine reported a start
};
