#pragma once

#include <QPointer>
#include <QSize>
#include <QWebEnginePage>

#include "webview/IWebEngine.h"

/// A page without permissions, files, certificate exceptions and script boxes. Its owner is asked for each address.
class CWebPage : public QWebEnginePage {
    Q_OBJECT

public:
    CWebPage(QWebEngineProfile& profile, IWebViewOwner& owner, QObject* parent);

    /// The page may not refuse to be left while the client loads another one.
    void SetLeaving(bool leaving) { m_bLeaving = leaving; }

protected:
    bool acceptNavigationRequest(const QUrl& url, NavigationType type, bool mainFrame) override;
    QWebEnginePage* createWindow(WebWindowType type) override;
    QStringList chooseFiles(FileSelectionMode mode, const QStringList& old, const QStringList& types) override;
    void javaScriptAlert(const QUrl& origin, const QString& text) override;
    bool javaScriptConfirm(const QUrl& origin, const QString& text) override;
    bool javaScriptPrompt(const QUrl& origin, const QString& text, const QString& standard, QString* result) override;
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString& text, int line,
                                  const QString& source) override;
    bool certificateError(const QWebEngineCertificateError& error) override;

private:
    IWebViewOwner& m_owner;
    bool m_bLeaving = false;
};

/// Takes the place of a popup until its address is known, and loads nothing.
class CPopupStandIn : public QWebEnginePage {
    Q_OBJECT

public:
    CPopupStandIn(QWebEngineProfile& profile, IWebViewOwner& owner, QObject* parent);

protected:
    bool acceptNavigationRequest(const QUrl& url, NavigationType type, bool mainFrame) override;

private:
    IWebViewOwner& m_owner;
    QSize m_size;
    bool m_bAddressed = false;
};
