// A module that does nothing.
extern "C" __attribute__((visibility("default"))) void* CreateZRPluginModule() {
    return nullptr;
}
