#pragma once

#include "ui/ZTextBase.h"

/// A text in the theme's colours, on one line or wrapped. The text is always plain text. It prefers the size of the
/// whole text, at most 240 pixels wide. Its minimum is the size of the dots if it may end in dots, and of the widest
/// word if it is wrapped.
/// Thread: main thread.
class ZRHOST_API ZText : public ZTextBase {
    Q_OBJECT

public:
    /// The role that selects size and colour in the theme.
    enum ZrStyle : int {
        /// 13 pixels, text colour.
        kBody = 0,
        /// 16 pixels, semi-bold, colour of headings.
        kTitle = 1,
        /// 11 pixels, muted colour.
        kSmall = 2,
        /// 13 pixels, accent colour.
        kAccent = 3,
        /// The title of a window: 14 pixels, semi-bold, colour of headings.
        kWindowTitle = 18,
    };

    /// Creates an empty text.
    /// Ownership: the parent deletes it. Without a parent the caller does.
    explicit ZText(QWidget* parent = nullptr);
    /// Creates a text with the default role.
    explicit ZText(const QString& text, QWidget* parent = nullptr);
    ~ZText() override;

    /// Sets the text, always as plain text.
    void setText(const QString& text);
    /// Sets the role. The default is kBody.
    void setZrStyle(ZrStyle style);

    /// Sets whether a line that is too long ends in dots; otherwise it is cut. Wrapped text never ends in dots.
    void setDottable(bool dottable);
    /// Returns whether the text ends in dots at its current size.
    bool isDotted() const;

    /// Sets whether the text is wrapped at word boundaries. The default is false.
    void setWordWrap(bool wrap);

private:
    struct Private;
    Private* const d;  // owned by the base
};
