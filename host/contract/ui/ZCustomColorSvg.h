#pragma once

#include <QColor>
#include <QRectF>
#include <QString>
#include <memory>

#include "framework/export.h"
#include "ui/ZWidgetTypes.h"

class QPainter;

/// Paints a drawing in one colour.
/// Thread: main thread.
class ZRHOST_API ZSvgIconRendererImp {
public:
    virtual ~ZSvgIconRendererImp();

    /// Paints the drawing into `rect`, sharp on the paint device. A disabled widget's drawing is paler.
    /// Failure: paints nothing for a null painter, an empty rectangle or an unknown name.
    virtual void render(ZWidgetState::type state, QPainter* painter, const QRectF& rect) = 0;
};

/// A drawing of ZResource in a colour of the caller.
/// Thread: main thread.
class ZRHOST_API ZCustomColorSvg {
public:
    /// Without a drawing, which paints nothing.
    ZCustomColorSvg();
    ~ZCustomColorSvg();

    /// Sets the drawing, a name of ZResource.
    /// Failure: an unknown name paints nothing and is logged.
    void setFile(const QString& name);
    /// Sets the colour of all parts. The default is the theme's text colour.
    void setColor(const QColor& color);

    /// Returns the renderer of this drawing.
    /// Ownership: it belongs to this object; never null.
    ZSvgIconRendererImp* renderer() const;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
