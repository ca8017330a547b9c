#pragma once

#include <memory>

#include "framework/export.h"
#include "ui/ZDialogBase.h"

class ZTitleBarBase;

/// A window without the platform's frame. The title bar moves it, its edges resize it, a double click on the title bar
/// maximises it. The title bar's buttons close, maximise and minimise it.
/// Thread: main thread.
class ZRHOST_API ZFrameLessWnd : public ZDialogBase {
    Q_OBJECT

public:
    /// Creates a hidden window without title bar and content.
    /// Ownership: the parent deletes it. Without a parent the caller does.
    explicit ZFrameLessWnd(QWidget* parent = nullptr);
    ~ZFrameLessWnd() override;

    /// Sets the content.
    /// Ownership: it becomes a child; an earlier one is deleted.
    void setContentWidget(QWidget* content);
    /// Sets the title bar and calls its initUi.
    /// Ownership: it becomes a child; an earlier one is deleted.
    void setTitleBar(ZTitleBarBase* titleBar);
    /// Shows or hides the button that maximises.
    /// Failure: without a title bar nothing happens.
    void showMaxBtn(bool visible);
    /// Shows or hides the button that minimises.
    /// Failure: without a title bar nothing happens.
    void showMinBtn(bool visible);
    /// Lays out title bar and content again.
    void updateLayout();

protected:
    /// Removes the margin of the edges while the window is maximised.
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    /// Start, continue and end resizing at an edge. The platform resizes where it can.
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
