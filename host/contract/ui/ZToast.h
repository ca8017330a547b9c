#pragma once

#include <QWidget>
#include <memory>

#include "framework/export.h"

/// A short message over its parent, which disappears after a time. It takes neither mouse presses nor the focus.
/// Thread: main thread.
/// Ownership: a toast is created with new and deletes itself when it disappears; hold it by QPointer only. A toast that
/// was never shown lives until its parent is deleted.
class ZRHOST_API ZToast : public QWidget {
    Q_OBJECT

public:
    /// The status, which selects colour and icon.
    enum ZrStyle : int {
        kSuccess = 0,
        kInfo = 1,
        kWarning = 2,
        kFailure = 3,
    };

    /// The message of a toast.
    struct ToastInfo {
        ZrStyle style = kSuccess;
        /// Plain text; wrapped if it is long.
        QString text;
        /// Values below 1 are treated as 1.
        int durationMs = 3000;
    };

    /// The toast is invisible before showToast.
    /// Failure: without a parent it never becomes visible.
    explicit ZToast(QWidget* parent);
    ~ZToast() override;

    /// Displays a message near the upper edge of the parent, as wide as the text and the parent allow.
    /// A second call replaces the message and restarts the time.
    void showToast(const ToastInfo& info);

    /// Follows the size of the parent.
    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
