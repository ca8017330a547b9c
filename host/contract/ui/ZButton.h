#pragma once

#include <QAbstractButton>
#include <memory>

#include "framework/export.h"

/// A button with a text and an optional icon before it. Tab gives it the focus, a click does not.
/// Thread: main thread.
class ZRHOST_API ZButton : public QAbstractButton {
    Q_OBJECT

public:
    /// The appearance.
    enum ZrStyle : int {
        kPlain = 0,
        /// The primary action.
        kFilled = 1,
        /// Without a background.
        kText = 2,
        /// The action of a strip for a premium right, 24 pixels high.
        kStrip = 7,
    };

    /// The rule for the width.
    enum ZrWidthType : int {
        kWidthOfText = 0,
        kWidthOfLayout = 1,
    };

    explicit ZButton(QWidget* parent = nullptr);
    explicit ZButton(const QString& text, QWidget* parent = nullptr);
    ~ZButton() override;

    /// Sets the icon, a name of ZResource; empty for none. `size` is in pixels.
    /// Failure: an unknown name paints nothing and is logged.
    void setIcon(const QString& name, const QSize& size);
    /// The default style is kPlain, the default width kWidthOfText.
    void setZrStyle(ZrStyle style);
    void setWidthType(ZrWidthType type);
    /// Distances in pixels.
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
    /// A QIcon would not follow the theme.
    using QAbstractButton::setIcon;

    struct Private;
    const std::unique_ptr<Private> d;
};
