#pragma once

#include <QObject>

#include "framework/export.h"

namespace host {
class CThemeControl;
}

namespace zr_ui_theme {

/// The current theme, and notification of its change. The object exists until the process ends, so widgets may stay
/// connected to it.
/// Thread: main thread.
class ZRHOST_API Manager : public QObject {
    Q_OBJECT

public:
    /// The numbers are part of the contract: the server and reports use them.
    enum Theme : int {
        /// Dark text on a light background.
        kThemeLight = 1,
        /// The default.
        kThemeDarkBlue = 2,
        kThemeBlack = 3,
    };
    Q_ENUM(Theme)

    /// Returns the manager, which the first call creates.
    /// Failure: never null, also after the end of the host.
    static Manager* instance();

    /// Returns the manager, or null before the first call of `instance` and after the end of the host.
    static Manager* instancePtr();

    /// Returns the current theme.
    Theme getTheme() const { return m_enTheme; }

Q_SIGNALS:
    /// The theme changed; getTheme returns the new one. Message core::kMsgThemeChanged follows.
    void themeChanged(zr_ui_theme::Manager::Theme theme);

private:
    friend class host::CThemeControl;

    Manager();
    ~Manager() override;

    Theme m_enTheme = kThemeDarkBlue;
};

}  // namespace zr_ui_theme
