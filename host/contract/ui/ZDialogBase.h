#pragma once

#include <QSize>
#include <QString>
#include <QWidget>
#include <memory>

#include "framework/export.h"

/// A top-level window of the client. Escape closes it.
/// Thread: main thread.
class ZRHOST_API ZDialogBase : public QWidget {
    Q_OBJECT

public:
    /// Creates a hidden window. It is a window also with a parent.
    /// Ownership: the parent deletes it. Without a parent the caller does.
    explicit ZDialogBase(QWidget* parent = nullptr);
    ~ZDialogBase() override;

    /// Sets whether the window stays above others. It changes neither visibility, place nor opacity.
    void setTopMost(bool topMost);
    /// Returns whether the window stays above others.
    bool isTopMost() const;
    /// The same; callers of an older form use it.
    void setKeepTop(bool keepTop);
    /// Sets whether the window may appear over a window in full-screen mode. It has no effect on this platform.
    void setEnableShowFullScreenAuxiliary(bool enabled);

    /// Sets the opacity, 0 to 1, exactly: the toolkit's own operation rounds small values to 0. It also applies to a
    /// native window that is created later.
    void setWindowOpacity(double opacity);
    /// Returns the opacity as it was set.
    double exactWindowOpacity() const;

    /// Shows or hides the window, with the exact opacity from the first frame on.
    void setVisible(bool visible) override;
    /// Sets the title of the window.
    void setWindowTitleText(const QString& title);

    /// Shows the window where it is.
    void show();
    /// Shows the window, centred over `over`, or on the screen if it is null. An invalid size keeps the window's size.
    void showCenter(QWidget* over, QSize size);

protected:
    /// Closes the window on Escape.
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
