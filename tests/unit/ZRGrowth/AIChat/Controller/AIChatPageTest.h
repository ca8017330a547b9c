#pragma once

#include <QApplication>

#include "AIChat/View/ZRAIChatWebDialog.h"
#include "AIChatManagerTest.h"

constexpr const char* kPage = "https://chat.zrgrowth.example/";
constexpr const char* kPreloadPage = "https://chat.zrgrowth.example/preload";

/// A manager that was started, with its window and page.
class AIChatPageTest : public AIChatManagerTest {
protected:
    using Params = QMap<QString, QString>;

    struct Request {
        int scene = 1;
        Params params = {};
        bool change = false;
        bool show = true;
        bool preload = false;
        const char* url = "";
    };

    AIChatPageTest() {
        Json::Value bridge;
        bridge["origins"].append("https://chat.zrgrowth.example");
        config.Set("web_bridge", bridge);
        manager.Init();
        Forget();
    }

    ~AIChatPageTest() override { ClosePage(); }

    void ClosePage() {
        manager.CloseAIChatPage();
        time.Settle();
    }

    /// Null if there is no window.
    static CZRAIChatWebDialog* Dialog() {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (auto* dialog = qobject_cast<CZRAIChatWebDialog*>(widget)) {
                return dialog;
            }
        }
        return nullptr;
    }

    void Open(const Request& request) {
        manager.OpenAIChatPage(ZRAIChatPageScene(request.scene), request.params, request.change, request.show,
                               request.preload, QString::fromUtf8(request.url));
        time.Settle();
    }

    void Preload() {
        Request request;
        request.preload = true;
        Open(request);
    }

    void PageLoads() {
        web.View().Succeed();
        time.Advance(std::chrono::milliseconds(200));
    }

    void Dismiss() {
        Dialog()->close();
        time.Advance(std::chrono::milliseconds(200));
    }

    void Forget() {
        AIChatManagerTest::Forget();
        reports.Forget();
        web.Forget();
    }

    std::vector<std::string> Texts() {
        std::vector<std::string> texts;
        for (const LogLine& line : log.Lines()) {
            texts.push_back(line.text);
        }
        return texts;
    }
};
