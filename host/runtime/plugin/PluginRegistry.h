#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "plugin/IZRPluginInterfaceFactory.h"
#include "plugin/IZRPluginModule.h"

/// Behind IZRPluginCenter: the factories and module objects of the process, in order of registration.
/// Needs nothing installed, and holds no lock while it calls anybody.
class CPluginRegistry {
public:
    /// Made at the first use, which may be a static initialiser; never destroyed.
    static CPluginRegistry& Instance();

    int AddModule(std::shared_ptr<IZRPluginModule> module);
    void AddFactory(std::shared_ptr<IZRPluginInterfaceFactory> factory, bool replace);
    std::shared_ptr<IZRPluginInterface> CreateInterface(const std::string& name);

    std::vector<std::shared_ptr<IZRPluginModule>> Modules();

    /// A moment, for WithdrawSince.
    uint64_t Now();

    /// Drops what was registered after that moment: the leavings of a module that could not be mapped.
    void WithdrawSince(uint64_t moment);

    /// Drops all factories and module objects, the youngest first, and takes no new ones.
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
