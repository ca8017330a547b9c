#pragma once

#include <QWidget>
#include <memory>

#include "framework/export.h"

/// A word that lies over its parent for a moment, goes by itself, and deletes itself then: it is made with new, and
/// watched by a QPointer or not at all. One that shows nothing stays until its parent goes. It takes neither presses
/// nor the focus. Main thread.
class ZRHOST_API ZToast : public QWidget {
    Q_OBJECT

public:
    enum ZrStyle : int {
        kSuccess = 0,
        kInfo = 1,
        kWarning = 2,
        kFailure = 3,
    };

    struct ToastInfo {
        ZrStyle style = kSuccess;
        QString text;           // plain; it is wrapped where it is long
        int durationMs = 3000;  // below 1: one millisecond
    };

    /// Nothing is seen before showToast. Without a parent nothing ever is.
    explicit ZToast(QWidget* parent);
    ~ZToast() override;

    /// Again: the new word stands in place of the old one, for its whole time.
    void showToast(const ToastInfo& info);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
