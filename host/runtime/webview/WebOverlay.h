#pragma once

#include <QWidget>
#include <functional>

class ZButton;
class ZText;

namespace host::web {

/// Covers a page with a text and up to one button. Main thread.
class CWebOverlay : public QWidget {
public:
    explicit CWebOverlay(QWidget* parent);

    /// The page is loading.
    void ShowLoading();
    /// A message, and a button that runs `act`.
    void ShowMessage(const QString& text, const QString& button, std::function<void()> act);
    /// Removes the cover.
    void Clear();

    bool HasMessage() const { return bool(m_fnAct); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void Show(const QString& text, const QString& button);

    ZText* const m_pText;
    ZButton* const m_pButton;
    std::function<void()> m_fnAct;
};

}  // namespace host::web
