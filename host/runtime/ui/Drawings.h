#pragma once

#include <QColor>
#include <QPixmap>
#include <QString>

#include "framework/export.h"

/// The drawings of the host by their names in ZResource, in the form of the current theme. Main thread.
namespace host::drawings {

ZRHOST_API bool IsKnown(const QString& name);

/// The size of the drawing in pixels. Empty for an unknown name.
ZRHOST_API QSize SizeOf(const QString& name);

/// Scaled to fit `size` in logical pixels, centred, for a screen with the device pixel ratio `ratio`. `color` replaces
/// the colour of a single-coloured drawing. Null for an unknown name and for an empty size.
ZRHOST_API QPixmap Render(const QString& name, const QSize& size, double ratio, const QColor& color);

/// The same for an SVG file or resource at `path`. Null if it cannot be read.
ZRHOST_API QPixmap RenderFile(const QString& path, const QSize& size, double ratio, const QColor& color);

}  // namespace host::drawings
