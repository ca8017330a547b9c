#pragma once

#include <QColor>
#include <QIcon>

namespace icons {

/// The colours of an icon in the states of its button.
struct Colors {
    QRgb normal;
    QRgb checked;
    QRgb disabled;
};

/// The drawing resources/icons/<name>.svg, sharp at any size. A name that there is no drawing of gives an
/// empty icon.
QIcon Make(const char* name, const Colors& colors);
QPixmap Pixmap(const char* name, QRgb color, int size);

}  // namespace icons
