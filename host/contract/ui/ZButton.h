#pragma once

#include <QAbstractButton>
#include <memory>

#include "framework/export.h"

/// A button with a text, and an icon before it. It takes the focus by Tab and not by a click. Main thread.
class ZRHOST_API ZButton : public QAbstractButton {
    Q_OBJECT

public:
    enum ZrStyle : int {
        kPlain = 0,
        kFilled = 1,  // the one thing to do
        kText = 2,    // without a plate
    };

    enum ZrWidthType : int {
        kWidthOfText = 0,
        kWidthOfLayout = 1,
    };

    explicit ZButton(QWidget* parent = nullptr);
    explicit ZButton(const QString& text, QWidget* parent = nullptr);
    ~ZButton() override;

    /// A name of ZResource; empty: no icon. A name that is not known shows nothing and is logged. `size` in pixels.
    void setIcon(const QString& name, const QSize& size);
    /// kPlain from the beginning, as wide as its text.
    void setZrStyle(ZrStyle style);
    void setWidthType(ZrWidthType type);
    /// Pixels.
    void setIconTextSpacing(int spacing);
    void setLeftRightPadding(int padding);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    using QAbstractButton::setIcon;  // one of the toolkit's icons would not follow the theme

    struct Private;
    const std::unique_ptr<Private> d;
};
