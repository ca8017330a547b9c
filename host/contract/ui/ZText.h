#pragma once

#include <QWidget>
#include <memory>

#include "framework/export.h"

/// A text in the theme's colours: one line, or wrapped. Plain, whatever it contains. Main thread.
class ZRHOST_API ZText : public QWidget {
    Q_OBJECT

public:
    /// Size and colour, as a theme knows them.
    enum ZrStyle : int {
        kBody = 0,
        kTitle = 1,
        kSmall = 2,
        kAccent = 3,
    };

    explicit ZText(QWidget* parent = nullptr);
    explicit ZText(const QString& text, QWidget* parent = nullptr);
    ~ZText() override;

    void setText(const QString& text);
    QString text() const;
    void setZrStyle(ZrStyle style);

    /// Whether a line that has no room ends in dots; it is cut otherwise. Wrapped text never ends in dots.
    void setDottable(bool dottable);
    /// Whether the text ends in dots at its present size.
    bool isDotted() const;

    void setWordWrap(bool wrap);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
