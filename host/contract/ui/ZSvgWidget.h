#pragma once

#include <QWidget>
#include <memory>

#include "framework/export.h"

/// A drawing of ZResource, scaled into the widget, aspect ratio kept, centred. It follows theme and screen.
/// Thread: main thread.
class ZRHOST_API ZSvgWidget : public QWidget {
    Q_OBJECT

public:
    explicit ZSvgWidget(QWidget* parent = nullptr);
    ~ZSvgWidget() override;

    /// Sets the drawing, a name of ZResource; empty for none.
    /// Failure: an unknown name paints nothing and is logged.
    void setSvgIconName(const QString& name);
    /// Returns the name of the drawing.
    QString svgIconName() const;

    /// Returns the drawing's own size.
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
