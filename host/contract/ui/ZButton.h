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
        /// A filled background with a border.
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
        /// As wide as icon, text and padding need, at most 240 pixels.
        kWidthOfText = 0,
        /// As wide as the layout allows.
        kWidthOfLayout = 1,
    };

    /// Creates a button without text.
    /// Ownership: the parent deletes it. Without a parent the caller does.
    explicit ZButton(QWidget* parent = nullptr);
    /// Creates a button with a text. An ampersand marks the mnemonic.
    explicit ZButton(const QString& text, QWidget* parent = nullptr);
    ~ZButton() override;

    /// Sets the icon, a name of ZResource; empty for none. `size` is in pixels.
    /// Failure: an unknown name paints nothing and is logged.
    void setIcon(const QString& name, const QSize& size);
    /// Sets the appearance. The default is kPlain.
    void setZrStyle(ZrStyle style);
    /// Sets the rule for the width. The default is kWidthOfText.
    void setWidthType(ZrWidthType type);
    /// Sets the distance between icon and text in pixels. The default is 6.
    void setIconTextSpacing(int spacing);
    /// Sets the distance between content and the left and right edge in pixels. The default is 14.
    void setLeftRightPadding(int padding);

    /// Returns the size for icon and text; the height is at least 30 pixels.
    QSize sizeHint() const override;
    /// Returns the same size.
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
