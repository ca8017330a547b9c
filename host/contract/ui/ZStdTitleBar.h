#pragma once

#include <QWidget>
#include <memory>

#include "framework/export.h"

class ZIconButton;

/// The base of title bars: buttons to minimise, maximise and close at the right. Every button has a name for screen
/// readers and works by keyboard.
/// Thread: main thread.
class ZRHOST_API ZTitleBarBase : public QWidget {
    Q_OBJECT

public:
    /// Creates an empty bar of 36 pixels; initUi adds the buttons.
    /// Ownership: the parent deletes it. Without a parent the caller does.
    explicit ZTitleBarBase(QWidget* parent = nullptr);
    ~ZTitleBarBase() override;

    /// Offers derived classes the events of the buttons on which they install it. The default takes none.
    bool eventFilter(QObject* watched, QEvent* event) override;

    /// Returns whether a press on that child moves the window. The default returns true for all but buttons. `widget`
    /// may be the bar itself.
    virtual bool isDraggable(QWidget* widget);
    /// Builds the bar. ZFrameLessWnd::setTitleBar calls it once.
    virtual void initUi();

    /// Shows or hides the button that maximises. It is hidden at first.
    /// Failure: before initUi nothing happens.
    void showMaxBtn(bool visible);
    /// Shows or hides the button that minimises. It is hidden at first.
    /// Failure: before initUi nothing happens.
    void showMinBtn(bool visible);
    /// Shows in the button whether the window is maximised.
    void syncTitleBarButtonStatus();
    /// Hides the tool tip that is visible, of any widget.
    void hideToolTip();
    /// Moves the window while the left button is down.
    void onLeftBtnDown();

protected:
    /// Returns the content left of the buttons; null for none. The bar becomes its parent.
    virtual QWidget* createCustomWidget();

    /// Returns the button that closes the window.
    /// Ownership: it belongs to the bar.
    /// Failure: null before initUi.
    ZIconButton* closeButton() const;

    /// Move the window while the left button is down on a part that is draggable.
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    /// Maximises or restores the window, if the button for it is visible.
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

/// The client's usual title bar.
class ZRHOST_API ZStdTitleBar : public ZTitleBarBase {
    Q_OBJECT

public:
    /// Creates a bar without content left of the buttons.
    explicit ZStdTitleBar(QWidget* parent = nullptr);
    ~ZStdTitleBar() override;
};
