#pragma once

#include <QColor>
#include <QPixmap>
#include <QString>

#include "framework/export.h"

/// The host's drawings by their names in ZResource, in the form that suits the theme of the moment. Main thread.
namespace host::drawings {

ZRHOST_API bool IsKnown(const QString& name);

/// The drawing's own size in pixels; empty for a name that is not known.
ZRHOST_API QSize SizeOf(const QString& name);

/// As large as `size` in logical pixels allows, proportions kept, in the middle; sharp on a screen of that ratio.
/// `color` is for what is drawn in one colour. Null for a name that is not known, and for an empty size.
ZRHOST_API QPixmap Render(const QString& name, const QSize& size, double ratio, const QColor& color);

/// The same for an SVG file or resource at `path`. Null if it cannot be read.
ZRHOST_API QPixmap RenderFile(const QString& path, const QSize& size, double ratio, const QColor& color);

}  // namespace host::drawings
