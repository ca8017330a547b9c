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
    explicit ZDialogBase(QWidget* parent = nullptr);
    ~ZDialogBase() override;

    /// Sets whether the window stays above others. It changes neither visibility, place nor opacity.
    void setTopMost(bool topMost);
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

    void setVisible(bool visible) override;
    void setWindowTitleText(const QString& title);

    /// Shows the window where it is.
    void show();
    /// Shows the window, centred over `over`, or on the screen if it is null. An invalid size keeps the window's size.
    void showCenter(QWidget* over, QSize size);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
