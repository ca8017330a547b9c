#include "plugin/IZRPluginInterface.h"
#include "plugin/IZRPluginInterfaceFactory.h"
#include "plugin/IZRPluginModule.h"

IZRPluginInterface::~IZRPluginInterface() = default;

bool IZRPluginInterface::SupportMultiThread() {
    return false;
}

IZRPluginInterfaceFactory::~IZRPluginInterfaceFactory() = default;

ZRPluginEventParam::~ZRPluginEventParam() = default;

IZRPluginModule::~IZRPluginModule() = default;

std::shared_ptr<IZRPluginInterface> IZRPluginModule::CreateInterface(const ZRPluginIID& /*iid*/) {
    return nullptr;
}

void IZRPluginModule::OnEvent(EnZRPluginEvent /*event*/, std::shared_ptr<ZRPluginEventParam> /*param*/) {}
