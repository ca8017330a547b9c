#include "framework/Ports.h"

#include <mutex>
#include <shared_mutex>

namespace host {
namespace {

bool g_bEnded = false;

// Never destroyed: a static destructor or a detached thread may still call the contract.
std::shared_mutex& Guard() {
    static auto* guard = new std::shared_mutex;
    return *guard;
}

}  // namespace

Ports PortsLock::s_ports;
__thread bool PortsLock::t_bMainThread = false;

void Install(const Ports& ports) {
    const std::unique_lock<std::shared_mutex> lock(Guard());
    PortsLock::s_ports = ports;
    PortsLock::t_bMainThread = true;
    g_bEnded = false;
}

void Uninstall() {
    const std::unique_lock<std::shared_mutex> lock(Guard());
    PortsLock::s_ports = Ports{};
    g_bEnded = true;
}

bool HasEnded() {
    return g_bEnded;
}

bool OnMainThread() {
    return PortsLock::t_bMainThread;
}

void PortsLock::Lock() {
    Guard().lock_shared();
}

void PortsLock::Unlock() {
    Guard().unlock_shared();
}

}  // namespace host
