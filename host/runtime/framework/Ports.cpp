#include "framework/Ports.h"

#include <pthread.h>

namespace host {
namespace {

bool g_bEnded = false;

// Prefers writers, so that busy threads don't delay Uninstall. Never destroyed: a static destructor or a detached
// thread may still call the contract.
pthread_rwlock_t g_guard = PTHREAD_RWLOCK_WRITER_NONRECURSIVE_INITIALIZER_NP;

// The contract calls of this thread that run inside each other. Only the first one locks: a second lock would wait for
// the writer that waits for the first.
thread_local int t_nDepth = 0;

class CWriteLock {
public:
    CWriteLock() { pthread_rwlock_wrlock(&g_guard); }
    ~CWriteLock() { pthread_rwlock_unlock(&g_guard); }
    CWriteLock(const CWriteLock&) = delete;
    CWriteLock& operator=(const CWriteLock&) = delete;
};

}  // namespace

Ports PortsLock::s_ports;
__thread bool PortsLock::t_bMainThread = false;

void Install(const Ports& ports) {
    const CWriteLock lock;
    PortsLock::s_ports = ports;
    PortsLock::t_bMainThread = true;
    g_bEnded = false;
}

void Uninstall() {
    const CWriteLock lock;
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
    if (t_nDepth++ == 0) {
        pthread_rwlock_rdlock(&g_guard);
    }
}

void PortsLock::Unlock() {
    if (--t_nDepth == 0) {
        pthread_rwlock_unlock(&g_guard);
    }
}

}  // namespace host
