#pragma once

#include <json/value.h>

#include <QSize>
#include <QString>
#include <functional>
#include <memory>

#include "ui/ZFrameLessWnd.h"

class CZRAIChatWebTitleBar;

namespace core {
namespace webview {
class ZRWebWidget;
}
}  // namespace core

/// The window of the AI chat. Closing it in any way empties the page and hides the window, which is used again.
/// Main thread.
class CZRAIChatWebDialog : public ZFrameLessWnd {
    Q_OBJECT

public:
    using Handler = std::function<std::shared_ptr<Json::Value>(const Json::Value& params, int call)>;

    explicit CZRAIChatWebDialog(QWidget* parent);
    ~CZRAIChatWebDialog() override;

    void LoadUrl(const QString& url);

    /// Sends an event to the page. Returns whether the page can receive it.
    bool InvokeJSAPI(const QString& name, const Json::Value& params);

    /// Returns whether the window itself has a handler of that name.
    static bool IsReservedJSAPIName(const QString& name);

    /// Offers a handler to the page. Returns false for an empty name or handler.
    bool RegisterExtendJSAPI(const QString& name, Handler handler);
    /// Answers the oldest open call of that name.
    void RespondToExtendJSAPI(const QString& name, const Json::Value& value);

    /// Shows the window in front, centred over the main window if it was hidden.
    void Show();
    /// Empties the page and hides the window, after a moment in which it is transparent. Nothing cancels that.
    void Hide();
    /// Empties the page and resets the title bar.
    void Clear();

Q_SIGNALS:
    /// The user or the page closed the window.
    void HiddenButNotClosed();
    void NewSessionBtnClicked();
    void PinBtnClicked(bool isChecked);
    void LoadEnd();

protected:
    void closeEvent(QCloseEvent* event) override;

private Q_SLOTS:
    void OnPinBtnClicked(bool isChecked);
    void OnNewSessionBtnClicked();
    void OnCloseButtonClicked();

private:
    void InitUI();
    void InitWebWidget();
    void RegisterReservedJSAPIs();
    void OnWebLoadEnd(bool success, int httpCode, QString url);
    void OnBeforePopup(QString const& url, bool* handled, QSize size);
    void OpenPopup(const QString& url, QSize size);
    void HandleSetNewSessionEnable(const Json::Value& params);
    void HandleUpdateNetworkStatus(const Json::Value& params);
    void HandleCloseWindow(const Json::Value& params);

    core::webview::ZRWebWidget* m_pWebWidget = nullptr;
    CZRAIChatWebTitleBar* m_pTitleBar = nullptr;
};
