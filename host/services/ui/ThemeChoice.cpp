#include "ui/ThemeChoice.h"

#include "core/ILocalStore.h"
#include "framework/HostLog.h"
#include "ui/ThemeControl.h"

namespace {

constexpr host::CHostLog kLog("Theme");
constexpr const char* kThemeKey = "Host_Theme";

}  // namespace

void CThemeChoice::Begin(int wanted) {
    int64_t number = wanted;
    if (wanted == 0 && !m_store.ReadInt64(kThemeKey, number)) {
        return;
    }
    if (!host::CThemeControl::IsTheme(number)) {
        kLog.Error(FMT_STRING("There is no theme {}"), number);
        return;
    }
    host::CThemeControl::Set(host::CThemeControl::Theme(number));
}

void CThemeChoice::Choose(int number) {
    if (!host::CThemeControl::IsTheme(number)) {
        kLog.Error(FMT_STRING("There is no theme {}"), number);
        return;
    }
    host::CThemeControl::Set(host::CThemeControl::Theme(number));
    if (!m_store.SaveInt64(kThemeKey, number)) {
        kLog.Error(FMT_STRING("The theme {} could not be kept"), number);
    }
}
