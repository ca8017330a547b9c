#pragma once

#include <QWidget>
#include <memory>

#include "framework/export.h"

/// A text in the theme's colours, on one line or wrapped. The text is always plain text.
/// Thread: main thread.
class ZRHOST_API ZText : public QWidget {
    Q_OBJECT

public:
    /// The role that selects size and colour in the theme.
    enum ZrStyle : int {
        kBody = 0,
        kTitle = 1,
        kSmall = 2,
        kAccent = 3,
        /// The title of a window.
        kWindowTitle = 18,
    };

    explicit ZText(QWidget* parent = nullptr);
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

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
