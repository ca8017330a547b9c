#pragma once

#include <QString>
#include <memory>

#include "webview/IWebEngine.h"

/// The conditions without which the engine would end the process.
struct WebEngineNeeds {
    QString library;
    QString helper;    // the engine's own program
    QString platform;  // of the window system
    bool isRoot = false;
    bool isSandboxOff = false;
};

/// Maps the engine's library for the first view, if everything that it needs is there. Main thread.
class CWebEngineLoader : public IWebEngine {
public:
    explicit CWebEngineLoader(bool enabled) : m_bEnabled(enabled) {}
    ~CWebEngineLoader() override;

    /// Returns whether views can be created. Maps nothing.
    bool IsAvailable() const;

    IWebView* NewView(IWebViewOwner& owner, QWidget* parent) override;
    void ForgetData() override;

    /// Returns what this process has.
    static WebEngineNeeds Needs();
    /// Returns why the engine cannot run; empty if it can.
    static QString Problem(const WebEngineNeeds& needs);

private:
    bool Map();

    const bool m_bEnabled;
    bool m_bTried = false;
    std::unique_ptr<IWebEngine> m_pEngine;
};
