#include "plugin/PluginRegistry.h"

#include <algorithm>

#include "framework/HostLog.h"
#include "plugin/IZRPluginCenter.h"

namespace {

constexpr host::CHostLog kLog("Plugin");

}  // namespace

CPluginRegistry& CPluginRegistry::Instance() {
    static auto* registry = new CPluginRegistry;
    return *registry;
}

int CPluginRegistry::AddModule(std::shared_ptr<IZRPluginModule> module) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    const bool known = std::any_of(m_modules.begin(), m_modules.end(),
                                   [&module](const RegisteredModule& it) { return it.module == module; });
    if (!module || known || m_bClosed) {
        return 0;
    }
    m_modules.push_back({std::move(module), ++m_nMoment});
    return 1;
}

void CPluginRegistry::AddFactory(std::shared_ptr<IZRPluginInterfaceFactory> factory, bool replace) {
    if (!factory) {
        return;
    }
    NamedFactory added{factory->GetInterfaceName(), factory};
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_bClosed) {
        return;
    }
    added.moment = ++m_nMoment;
    const auto same = [&added](const NamedFactory& it) { return it.name == added.name; };
    const auto found = std::find_if(m_factories.begin(), m_factories.end(), same);
    if (found == m_factories.end()) {
        m_factories.push_back(std::move(added));
    } else if (replace) {
        std::swap(*found, added);  // destroyed after the lock
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
    std::shared_ptr<IZRPluginInterface> service;
    if (factory) {
        host::CallAndLogExceptions(kLog, "The factory of a service", [&] { service = factory->CreateInterface(); });
    }
    return service;
}

std::vector<std::shared_ptr<IZRPluginModule>> CPluginRegistry::Modules() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    std::vector<std::shared_ptr<IZRPluginModule>> modules;
    modules.reserve(m_modules.size());
    for (const RegisteredModule& registered : m_modules) {
        modules.push_back(registered.module);
    }
    return modules;
}

uint64_t CPluginRegistry::Now() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_nMoment;
}

void CPluginRegistry::WithdrawSince(uint64_t moment) {
    // Declared before the lock, so that they are destroyed after it.
    std::vector<NamedFactory> factories;
    std::vector<RegisteredModule> modules;
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto withdraw = [moment](auto& from, auto& to) {
        const auto first =
            std::stable_partition(from.begin(), from.end(), [moment](const auto& it) { return it.moment <= moment; });
        std::move(first, from.end(), std::back_inserter(to));
        from.erase(first, from.end());
    };
    withdraw(m_factories, factories);
    withdraw(m_modules, modules);
}

void CPluginRegistry::Close() {
    std::vector<RegisteredModule> modules;
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
