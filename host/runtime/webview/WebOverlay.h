#pragma once

#include <QWidget>
#include <functional>

class ZButton;
class ZText;

namespace host::web {

/// Covers a page with a text, and a message also with buttons. Main thread.
class CWebOverlay : public QWidget {
public:
    explicit CWebOverlay(QWidget* parent);

    /// The page is loading.
    void ShowLoading();
    /// A message with a button that runs `browser`, and if `retry` is not null, with one that runs `retry`.
    void ShowMessage(const QString& text, std::function<void()> retry, std::function<void()> browser);
    /// Removes the cover.
    void Clear();

    bool HasMessage() const { return bool(m_fnBrowser); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void Show(const QString& text);

    ZText* const m_pText;
    ZButton* const m_pRetry;
    ZButton* const m_pBrowser;
    std::function<void()> m_fnRetry;
    std::function<void()> m_fnBrowser;
};

}  // namespace host::web
