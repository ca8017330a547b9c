#include "plugin/PluginRegistry.h"

#include <algorithm>

#include "plugin/IZRPluginCenter.h"

CPluginRegistry& CPluginRegistry::Instance() {
    static auto* registry = new CPluginRegistry;
    return *registry;
}

int CPluginRegistry::AddModule(std::shared_ptr<IZRPluginModule> module) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    const bool known = std::find(m_modules.begin(), m_modules.end(), module) != m_modules.end();
    if (!module || known || m_bClosed) {
        return 0;
    }
    m_modules.push_back(std::move(module));
    return 1;
}

void CPluginRegistry::AddFactory(std::shared_ptr<IZRPluginInterfaceFactory> factory, bool replace) {
    if (!factory) {
        return;
    }
    NamedFactory added{factory->GetInterfaceName(), std::move(factory)};
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_bClosed) {
        return;
    }
    const auto same = [&added](const NamedFactory& it) { return it.name == added.name; };
    const auto found = std::find_if(m_factories.begin(), m_factories.end(), same);
    if (found == m_factories.end()) {
        m_factories.push_back(std::move(added));
    } else if (replace) {
        std::swap(*found, added);  // the old one goes when the lock is gone
    }
}

std::shared_ptr<IZRPluginInterface> CPluginRegistry::CreateInterface(const std::string& name) {
    std::shared_ptr<IZRPluginInterfaceFactory> factory;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto found = std::find_if(m_factories.begin(), m_factories.end(),
                                        [&name](const NamedFactory& it) { return it.name == name; });
        if (found != m_factories.end()) {
            factory = found->factory;
        }
    }
    return factory ? factory->CreateInterface() : nullptr;
}

std::vector<std::shared_ptr<IZRPluginModule>> CPluginRegistry::Modules() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_modules;
}

void CPluginRegistry::Close() {
    std::vector<std::shared_ptr<IZRPluginModule>> modules;
    std::vector<NamedFactory> factories;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_bClosed = true;
        modules.swap(m_modules);
        factories.swap(m_factories);
    }
    while (!factories.empty()) {
        factories.pop_back();
    }
    while (!modules.empty()) {
        modules.pop_back();
    }
}

int IZRPluginCenter::RegisterModule(std::shared_ptr<IZRPluginModule> module) {
    return CPluginRegistry::Instance().AddModule(std::move(module));
}

void IZRPluginCenter::RegisterInterfaceFactory(std::shared_ptr<IZRPluginInterfaceFactory> factory, bool replace) {
    CPluginRegistry::Instance().AddFactory(std::move(factory), replace);
}

std::shared_ptr<IZRPluginInterface> IZRPluginCenter::_CreateInterface(const std::string& interfaceName) {
    return CPluginRegistry::Instance().CreateInterface(interfaceName);
}
