#pragma once

#include <QObject>

#include "framework/export.h"

namespace host {
class ThemeControl;
}

namespace zr_ui_theme {

/// Which theme the client wears, and the news of its change. It lives as long as the process, so that a widget
/// may listen to it at any time. Main thread.
class ZRHOST_API Manager : public QObject {
    Q_OBJECT

public:
    /// The numbers are what others know a theme by.
    enum Theme : int {
        kThemeLight = 1,
        kThemeDarkBlue = 2,
        kThemeBlack = 3,
    };
    Q_ENUM(Theme)

    /// The manager, made at the first call. Never null, also after the host has ended.
    static Manager* instance();

    /// The manager, or null if nobody has asked for it yet or the host has ended.
    static Manager* instancePtr();

    Theme getTheme() const { return m_enTheme; }

Q_SIGNALS:
    /// The theme is another one now; getTheme gives it already. Message core::kMsgThemeChanged follows.
    void themeChanged(zr_ui_theme::Manager::Theme theme);

private:
    friend class host::ThemeControl;

    Manager();
    ~Manager() override;

    Theme m_enTheme = kThemeDarkBlue;
};

}  // namespace zr_ui_theme
