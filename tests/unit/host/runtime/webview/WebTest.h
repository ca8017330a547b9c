#pragma once

#include <QAbstractButton>
#include <QSignalSpy>

#include "support/Click.h"
#include "support/ScriptedHostTest.h"
#include "ui/ZText.h"
#include "webview/ZRWebWidget.h"

/// A web widget, an allow-listed origin https://ours.test, and the signals of the widget.
class WebTest : public ScriptedHostTest {
protected:
    using Ends = std::vector<std::string>;

    WebTest() {
        Json::Value bridge;
        bridge["origins"].append("https://ours.test");
        config.Set("web_bridge", bridge);
        widget.resize(400, 500);
        QObject::connect(
            &widget, &core::webview::ZRWebWidget::LoadEnd, [this](bool success, int httpCode, const QString& url) {
                ends.push_back((success ? "good " : "failed ") + std::to_string(httpCode) + ' ' + url.toStdString());
            });
    }

    ~WebTest() override { web.Forget(); }

    /// Loads and settles; the view then waits for the answer.
    void Load(const char* url) {
        widget.LoadUrl(QString::fromUtf8(url));
        time.Settle();
    }

    void LoadWell(const char* url = "https://ours.test/") {
        Load(url);
        web.View().Succeed();
        time.Settle();
    }

    void Show() {
        widget.show();
        time.Settle();
    }

    /// The text that covers the page; empty if nothing does.
    std::string Cover() const {
        const auto* overlay = widget.findChild<QWidget*>(QStringLiteral("WebOverlay"));
        return overlay->isHidden() ? ""
                                   : overlay->findChild<ZText*>(QStringLiteral("WebOverlayText"))->text().toStdString();
    }

    QAbstractButton* Retry() const { return widget.findChild<QAbstractButton*>(QStringLiteral("WebOverlayRetry")); }
    QAbstractButton* Browser() const { return widget.findChild<QAbstractButton*>(QStringLiteral("WebOverlayBrowser")); }

    /// The visible buttons of the cover, for the eye and for a screen reader.
    std::vector<std::string> Buttons() const {
        std::vector<std::string> texts;
        for (const QAbstractButton* button : {Retry(), Browser()}) {
            if (button->isVisible()) {
                EXPECT_EQ(button->accessibleName(), button->text());
                texts.push_back(button->text().toStdString());
            }
        }
        return texts;
    }

    core::webview::ZRWebWidget widget;
    Ends ends;
};
