#include "ui/ThemeControl.h"

#include "core/IMessageBus.h"
#include "core/message_ids.h"
#include "framework/HostLog.h"
#include "framework/Ports.h"

namespace host {
namespace {

constexpr CHostLog kLog("Theme");

}  // namespace

void CThemeControl::Set(Theme theme) {
    if (HasEnded()) {
        return;
    }
    if (!IsTheme(theme)) {
        kLog.Error(FMT_STRING("There is no theme {}"), int(theme));
        return;
    }
    zr_ui_theme::Manager* manager = zr_ui_theme::Manager::instance();
    if (manager->m_enTheme == theme) {
        return;
    }
    manager->m_enTheme = theme;
    Q_EMIT manager->themeChanged(theme);
    const PortsLock ports;
    if (ports->bus) {
        ports->bus->Send("[Host]", core::kMsgThemeChanged, 0, nullptr);
    }
}

}  // namespace host
