#include "ui/ThemeChoice.h"

#include "core/ILocalStore.h"
#include "framework/HostLog.h"
#include "ui/ThemeControl.h"

namespace {

constexpr host::HostLog kLog("Theme");
constexpr const char* kThemeKey = "Host_Theme";

}  // namespace

void CThemeChoice::Begin(int wanted) {
    int64_t number = wanted;
    if (wanted == 0 && !m_store.ReadInt64(kThemeKey, number)) {
        return;
    }
    if (!host::ThemeControl::IsTheme(number)) {
        kLog.Error(FMT_STRING("There is no theme {}"), number);
        return;
    }
    host::ThemeControl::Set(host::ThemeControl::Theme(number));
}

void CThemeChoice::Choose(int number) {
    if (!host::ThemeControl::IsTheme(number)) {
        kLog.Error(FMT_STRING("There is no theme {}"), number);
        return;
    }
    host::ThemeControl::Set(host::ThemeControl::Theme(number));
    if (!m_store.SaveInt64(kThemeKey, number)) {
        kLog.Error(FMT_STRING("The theme {} could not be kept"), number);
    }
}
