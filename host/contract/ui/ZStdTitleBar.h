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
    explicit ZTitleBarBase(QWidget* parent = nullptr);
    ~ZTitleBarBase() override;

    /// Offers derived classes the events of the buttons on which they install it. The default takes none.
    bool eventFilter(QObject* watched, QEvent* event) override;

    /// Returns whether a press on that child moves the window. The default returns true for all but buttons. `widget`
    /// may be the bar itself.
    virtual bool isDraggable(QWidget* widget);
    /// Builds the bar. ZFrameLessWnd::setTitleBar calls it once.
    virtual void initUi();

    void showMaxBtn(bool visible);
    void showMinBtn(bool visible);
    /// Shows in the button whether the window is maximised.
    void syncTitleBarButtonStatus();
    void hideToolTip();
    /// Moves the window while the left button is down.
    void onLeftBtnDown();

protected:
    /// Returns the content left of the buttons; null for none. The bar becomes its parent.
    virtual QWidget* createCustomWidget();

    /// Null before initUi.
    ZIconButton* closeButton() const;

    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

/// The client's usual title bar.
class ZRHOST_API ZStdTitleBar : public ZTitleBarBase {
    Q_OBJECT

public:
    explicit ZStdTitleBar(QWidget* parent = nullptr);
    ~ZStdTitleBar() override;
};
