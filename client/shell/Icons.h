#pragma once

#include <QIcon>

#include "Theme.h"

namespace icons {

/// The colours of an icon in the states of its button.
struct Colors {
    theme::ColorName normal;
    theme::ColorName checked;
    theme::ColorName disabled;
};

/// In the colours of the theme of the moment; theme::Keep has one made anew when that changes.
/// The drawing resources/icons/<name>.svg, sharp at any size. A name that there is no drawing of gives an
/// empty icon.
QIcon Make(const char* name, const Colors& colors);
QPixmap Pixmap(const char* name, theme::ColorName color, int size);

}  // namespace icons
