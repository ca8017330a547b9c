#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "plugin/IZRPluginInterfaceFactory.h"
#include "plugin/IZRPluginModule.h"

/// The factories and modules of the process behind IZRPluginCenter, in order of registration. It needs no ports and
/// holds no lock during calls of other code. Any thread.
class CPluginRegistry {
public:
    /// Constructed at first use, also by a static initialiser. Never destroyed.
    static CPluginRegistry& Instance();

    int AddModule(std::shared_ptr<IZRPluginModule> module);
    void AddFactory(std::shared_ptr<IZRPluginInterfaceFactory> factory, bool replace);
    std::shared_ptr<IZRPluginInterface> CreateInterface(const std::string& name);

    std::vector<std::shared_ptr<IZRPluginModule>> Modules();

    /// The count of registrations, for WithdrawSince.
    uint64_t Now();

    /// Removes all that was registered after `moment`, for a module that failed to load.
    void WithdrawSince(uint64_t moment);

    /// Removes all factories and modules, the newest first. Later registrations are ignored.
    void Close();

private:
    struct NamedFactory {
        std::string name;
        std::shared_ptr<IZRPluginInterfaceFactory> factory;
        uint64_t moment = 0;
    };
    struct RegisteredModule {
        std::shared_ptr<IZRPluginModule> module;
        uint64_t moment = 0;
    };

    std::mutex m_mutex;
    bool m_bClosed = false;
    uint64_t m_nMoment = 0;
    std::vector<RegisteredModule> m_modules;
    std::vector<NamedFactory> m_factories;
};
