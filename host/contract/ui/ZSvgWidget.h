#pragma once

#include <QWidget>
#include <memory>

#include "framework/export.h"

/// A drawing of ZResource, scaled into the widget, aspect ratio kept, centred. It follows theme and screen.
/// Thread: main thread.
class ZRHOST_API ZSvgWidget : public QWidget {
    Q_OBJECT

public:
    /// Creates a widget without a drawing.
    /// Ownership: the parent deletes it. Without a parent the caller does.
    explicit ZSvgWidget(QWidget* parent = nullptr);
    ~ZSvgWidget() override;

    /// Sets the drawing, a name of ZResource; empty for none.
    /// Failure: an unknown name paints nothing and is logged.
    void setSvgIconName(const QString& name);
    /// Returns the name of the drawing; empty for none, and after an unknown name.
    QString svgIconName() const;

    /// Returns the drawing's own size in pixels; 0 by 0 for none.
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
