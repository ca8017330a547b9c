#include <stdexcept>

extern "C" __attribute__((visibility("default"))) int LoadPluginModuleCThrows() {
    throw std::runtime_error("not today");
}
