#pragma once

#include <QAbstractButton>
#include <memory>

#include "framework/export.h"
#include "ui/ZWidgetTypes.h"

/// A button that is an icon. It never takes the focus by a click, only by Tab. Follows theme and screen by itself.
/// Main thread.
class ZRHOST_API ZIconButton : public QAbstractButton {
    Q_OBJECT

public:
    explicit ZIconButton(QWidget* parent = nullptr);
    ~ZIconButton() override;

    /// Names of ZResource. A name that is not known shows nothing and is logged.
    void setSvgIconName(const QString& name);
    /// What a checked button shows; empty, or not known: the same.
    void setCheckedSvgIconName(const QString& name);

    /// Fixed, in pixels.
    void setIconButtonSize(const QSize& size);
    void setIconColorStyle(ZIconColorStyle::type style);
    /// Whether the background changes under the pointer and when the button is pressed; it does from the beginning.
    /// Without it the disc of the style `onPicture` stays, with the same darkness.
    void setHoverBackground(bool shown);
    /// Between the icon and each edge, in pixels.
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
