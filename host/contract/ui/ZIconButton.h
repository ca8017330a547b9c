#pragma once

#include <QAbstractButton>
#include <memory>

#include "framework/export.h"
#include "ui/ZWidgetTypes.h"

/// A button that consists of an icon. Tab gives it the focus, a click does not. It follows theme and screen.
/// Thread: main thread.
class ZRHOST_API ZIconButton : public QAbstractButton {
    Q_OBJECT

public:
    /// Sizes with a number.
    enum ZrSize : int {
        /// 16 by 16 pixels.
        kSmall = 1,
    };

    /// Creates a button without an icon.
    /// Ownership: the parent deletes it. Without a parent the caller does.
    explicit ZIconButton(QWidget* parent = nullptr);
    ~ZIconButton() override;

    /// Sets the icon, a name of ZResource.
    /// Failure: an unknown name paints nothing and is logged.
    void setSvgIconName(const QString& name);
    /// Sets the icon of the checked state.
    /// Failure: an empty or unknown name leaves the icon of `setSvgIconName`.
    void setCheckedSvgIconName(const QString& name);

    /// Sets a fixed size in pixels.
    void setIconButtonSize(const QSize& size);
    void setIconButtonSize(ZrSize size);
    /// Sets the role that selects the icon's colour. The default is `normal`.
    void setIconColorStyle(ZIconColorStyle::type style);
    /// Sets whether the background changes under the pointer and while the button is pressed. The default is true.
    /// Without it, the disc of the style `onPicture` keeps its darkness.
    void setHoverBackground(bool shown);
    /// Sets the distance between the icon and each edge, in pixels.
    void setIconMargins(int margin);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
