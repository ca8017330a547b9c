#include "framework/Ports.h"
#include "ui/zr_ui_theme.h"

namespace zr_ui_theme {
namespace {

Manager* g_pManager = nullptr;

}  // namespace

Manager::Manager() {
    // A queued connection finds the type by its name.
    qRegisterMetaType<Theme>();
}

Manager::~Manager() = default;

// Never destroyed: widgets of any module may listen until the process ends.
Manager* Manager::instance() {
    if (!g_pManager) {
        g_pManager = new Manager;
    }
    return g_pManager;
}

Manager* Manager::instancePtr() {
    return host::HasEnded() ? nullptr : g_pManager;
}

}  // namespace zr_ui_theme
