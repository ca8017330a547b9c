#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <type_traits>
#include <typeinfo>

#include "plugin/IZRPluginInterface.h"
#include "plugin/IZRPluginInterfaceFactory.h"

/// The factory of a service of which there is one per process: `Impl` is made at the first call and
/// shared by all callers. `Interface` must stand in the global namespace, since its type name is the
/// name that other modules ask for.
template <class Impl, class Interface>
class TplZRPluginInterfaceFactoryUnique final : public IZRPluginInterfaceFactory {
    static_assert(std::is_base_of<Interface, Impl>::value, "Impl implements Interface");
    static_assert(std::is_base_of<IZRPluginInterface, Interface>::value, "Interface is a plug-in interface");

public:
    std::string GetInterfaceName() override { return typeid(Interface).name(); }

    std::shared_ptr<IZRPluginInterface> CreateInterface() override {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!m_pInterface) {
            m_pInterface = std::make_shared<Impl>();
        }
        return m_pInterface;
    }

private:
    std::shared_ptr<Interface> m_pInterface;
    std::mutex m_mutex;
};
