#pragma once

#include "ui/zr_ui_theme.h"

namespace host {

/// The host's own hand on the theme; modules only read it. Main thread.
class CThemeControl {
public:
    using Theme = zr_ui_theme::Manager::Theme;

    /// The themes there are, by number.
    static constexpr Theme kThemes[] = {zr_ui_theme::Manager::kThemeLight, zr_ui_theme::Manager::kThemeDarkBlue,
                                        zr_ui_theme::Manager::kThemeBlack};
    static constexpr bool IsTheme(long long number) { return number >= kThemes[0] && number <= kThemes[2]; }

    /// Changes the theme, then tells the manager's listeners, then the bus. The theme of the moment again tells
    /// nobody. A number that is no theme changes nothing and is logged; after the host's end nothing happens.
    ZRHOST_API static void Set(Theme theme);
};

}  // namespace host
