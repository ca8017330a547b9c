#pragma once

#include <QIcon>

#include "Theme.h"

namespace icons {

/// The colours of an icon by the state of its button.
struct Colors {
    theme::ColorName normal;
    theme::ColorName checked;
    theme::ColorName disabled;
};

/// Returns the drawing resources/icons/<name>.svg in the colours of the current theme, sharp at any size. A change of
/// the theme does not change an existing icon. An unknown name is logged and returns an empty icon.
QIcon Make(const char* name, const Colors& colors);
QPixmap Pixmap(const char* name, theme::ColorName color, int size);

}  // namespace icons
