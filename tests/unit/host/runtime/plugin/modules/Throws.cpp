#include <stdexcept>

#include "plugin/IZRPluginCenter.h"
#include "plugin/IZRPluginModule.h"

namespace {

class CLateModule : public IZRPluginModule {
public:
    std::string GetSymbolName() override { return "late"; }
    void OnInit() override {}
    void OnUnInit() override {}
    void OnLogin() override { throw std::runtime_error("called all the same"); }
    void OnLogout() override {}
};

}  // namespace

extern "C" {

__attribute__((visibility("default"))) int LoadPluginModuleCThrows() {
    throw std::runtime_error("not today");
}

__attribute__((visibility("default"))) int LoadPluginModuleCThrowsNumber() {
    throw 42;
}

__attribute__((visibility("default"))) int LoadPluginModuleCThrowsLate() {
    IZRPluginCenter::RegisterModule(std::make_shared<CLateModule>());
    throw std::runtime_error("too late");
}

}  // extern "C"
