#pragma once

#include <gmock/gmock.h>

#include <QWebEngineProfile>
#include <memory>
#include <vector>

#include "framework/Ports.h"
#include "support/RealTime.h"
#include "support/ScriptedLog.h"
#include "webview/IWebEngine.h"

/// Notes what the engine's page asks and reports.
class COwner : public IWebViewOwner {
public:
    struct Navigation {
        QUrl url;
        EnWebNavigation type;
        bool mainFrame;
    };
    struct Popup {
        QUrl url;
        QSize size;
    };

    bool AcceptNavigation(const QUrl& url, EnWebNavigation type, bool mainFrame) override {
        navigations.push_back({url, type, mainFrame});
        return accepts;
    }
    void LoadStarted() override { loads.push_back("started"); }
    void LoadFinished(bool success, int httpCode) override {
        loads.push_back((success ? "good " : "failed ") + std::to_string(httpCode));
    }
    void MessageReceived(const QString& text) override { messages.push_back(text.toStdString()); }
    void RenderProcessGone() override { ++goneCount; }
    bool AcceptPopup() override { return accepts; }
    void PopupAddressed(const QUrl& url, const QSize& size) override { popups.push_back({url, size}); }
    void ContextMenuWanted(const QPoint& /*place*/, int /*possible*/, std::function<void(int)> /*edit*/) override {}

    bool accepts = true;
    std::vector<Navigation> navigations;
    std::vector<Popup> popups;
    std::vector<std::string> loads;
    std::vector<std::string> messages;
    int goneCount = 0;
};

class EngineTest : public ::testing::Test {
protected:
    EngineTest() {
        host::Ports ports;
        ports.log = &log;
        host::Install(ports);
    }

    ~EngineTest() override { host::Uninstall(); }

    CScriptedLog log;
    COwner owner;
    std::shared_ptr<QWebEngineProfile> profile = std::make_shared<QWebEngineProfile>();
};
