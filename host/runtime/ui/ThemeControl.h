#pragma once

#include "ui/zr_ui_theme.h"

namespace host {

/// Changes the theme for the host. Modules only read it. Main thread.
class CThemeControl {
public:
    using Theme = zr_ui_theme::Manager::Theme;

    /// All themes, ordered by number.
    static constexpr Theme kThemes[] = {zr_ui_theme::Manager::kThemeLight, zr_ui_theme::Manager::kThemeDarkBlue,
                                        zr_ui_theme::Manager::kThemeBlack};
    static constexpr bool IsTheme(long long number) { return number >= kThemes[0] && number <= kThemes[2]; }

    /// Changes the theme, then notifies the listeners of the manager, then the bus. The current theme notifies nobody.
    /// An invalid number is logged and ignored. After the end of the host nothing happens.
    ZRHOST_API static void Set(Theme theme);
};

}  // namespace host
