#pragma once

#include <QWidget>
#include <memory>

#include "framework/export.h"

/// A text in the theme's colours, on one line or wrapped. The text is always plain text. A style-sheet rule of the
/// widget overrides colour and font. If the text is cut, the tool tip shows all of it, unless another one was set.
/// Thread: main thread.
class ZRHOST_API ZText : public QWidget {
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
    /// Returns the text as it was set, also if it is displayed with dots.
    QString text() const;
    /// Sets the role. The default is kBody.
    void setZrStyle(ZrStyle style);

    /// Sets whether a line that is too long ends in dots; otherwise it is cut. Wrapped text never ends in dots.
    void setDottable(bool dottable);
    /// Returns whether the text ends in dots at its current size.
    bool isDotted() const;

    /// Sets whether the text is wrapped at word boundaries. The default is false.
    void setWordWrap(bool wrap);

    /// Returns the size of the whole text, at most 240 pixels wide.
    QSize sizeHint() const override;
    /// Returns the size of the dots for a text that may end in dots, and of the widest word for a wrapped one.
    QSize minimumSizeHint() const override;
    /// Returns whether the text is wrapped.
    bool hasHeightForWidth() const override;
    /// Returns the height of the wrapped text at that width in pixels, or -1 if it is not wrapped.
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
