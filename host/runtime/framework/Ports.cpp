#include "framework/Ports.h"

#include <mutex>
#include <shared_mutex>

namespace host {
namespace {

Ports g_ports;
bool g_bEnded = false;
// Never destroyed: a static destructor or a straggling thread may still call the contract.
std::shared_mutex& Guard() {
    static auto* guard = new std::shared_mutex;
    return *guard;
}
thread_local bool t_bMainThread = false;

}  // namespace

void Install(const Ports& ports) {
    const std::unique_lock<std::shared_mutex> lock(Guard());
    g_ports = ports;
    g_bEnded = false;
    t_bMainThread = true;
}

void Uninstall() {
    const std::unique_lock<std::shared_mutex> lock(Guard());
    g_ports = Ports{};
    g_bEnded = true;
}

bool HasEnded() {
    return g_bEnded;
}

bool OnMainThread() {
    return t_bMainThread;
}

PortsInUse::PortsInUse() : m_bLocked(!t_bMainThread) {
    if (m_bLocked) {
        Guard().lock_shared();
    }
}

PortsInUse::~PortsInUse() {
    if (m_bLocked) {
        Guard().unlock_shared();
    }
}

const Ports* PortsInUse::operator->() const {
    return &g_ports;
}

}  // namespace host
