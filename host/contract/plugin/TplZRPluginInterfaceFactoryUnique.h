#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <type_traits>
#include <typeinfo>

#include "plugin/IZRPluginInterface.h"
#include "plugin/IZRPluginInterfaceFactory.h"

/// The factory of a service with one object per process, which the first call creates. `Interface` is in the global
/// namespace: its type name is the name under which other modules find the service.
/// Thread: any.
/// Ownership: the factory and all callers share the object.
/// Failure: an exception of Impl's constructor is passed on, which the centre logs; the next call tries again.
template <class Impl, class Interface>
class TplZRPluginInterfaceFactoryUnique final : public IZRPluginInterfaceFactory {
    static_assert(std::is_base_of<Interface, Impl>::value, "Impl implements Interface");
    static_assert(std::is_base_of<IZRPluginInterface, Interface>::value, "Interface is a plug-in interface");

public:
    /// Returns the name that RegisterInterfaceFactory and CreateInterface of the centre use.
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
