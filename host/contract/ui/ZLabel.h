#pragma once

#include <QMargins>
#include "ui/ZTextBase.h"

/// A short status text in the colour of the status, with an optional background. The text is plain text. It asks for
/// the size of text and margins, at most 240 pixels wide. A text that is cut ends in dots.
/// Thread: main thread.
class ZRHOST_API ZLabel : public ZTextBase {
    Q_OBJECT

public:
    /// The status.
    enum ZrStyle : int {
        kWarning = 0,
        kFailure = 1,
        kSuccess = 2,
        kAccent = 3,
        kNeutral = 5,
    };

    enum ZrBgStyle : int {
        /// No background.
        kBgNone = 0,
        /// A light tint of the text's colour.
        kBgTinted = 1,
        /// A plate in the colour of the window, which is below what an event filter paints ahead of the label.
        kBgPlate = 2,
    };

    /// Creates an empty label with style kNeutral and no background.
    /// Ownership: the parent deletes it. Without a parent the caller does.
    explicit ZLabel(QWidget* parent = nullptr);
    /// Creates a label with a text.
    explicit ZLabel(const QString& text, QWidget* parent = nullptr);
    ~ZLabel() override;

    /// Sets the text, always as plain text.
    void setText(const QString& text);
    /// Sets the status, which selects the colour.
    void setZrStyle(ZrStyle style);
    /// Sets the background.
    void setZrBgStyle(ZrBgStyle style);
    /// Sets the distance between the text and each edge, in pixels.
    void setCustomMargin(const QMargins& margins);
    /// Sets the distance between the text and the left and right edge, in pixels; none above and below.
    void setCustomMargin(int margin);

private:
    struct Private;
    Private* const d;  // owned by the base
};
