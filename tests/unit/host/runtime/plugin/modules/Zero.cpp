extern "C" __attribute__((visibility("default"))) int LoadPluginModuleCZero() {
    return 0;
}
