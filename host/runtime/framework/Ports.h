#pragma once

#include "framework/export.h"

class IAccount;
class IChannel;
class ICommonConfig;
class IDomains;
class IEnvironment;
class IHttp;
class ILanguage;
class ILocalStore;
class ILog;
class IMessageBus;
class IPoster;
class IPictures;
class IRandom;
class IReports;
class IServerClock;
class ISlots;
class IUrlOpener;

namespace host {

/// The services behind the contract. Any may be null: its operations then do nothing and return their
/// empty value.
struct Ports {
    ILog* log = nullptr;
    IPoster* poster = nullptr;
    IMessageBus* bus = nullptr;
    IChannel* channel = nullptr;
    ILocalStore* store = nullptr;
    ICommonConfig* commonConfig = nullptr;
    IAccount* account = nullptr;
    IEnvironment* environment = nullptr;
    ILanguage* language = nullptr;
    IServerClock* clock = nullptr;
    IRandom* random = nullptr;
    IUrlOpener* urls = nullptr;
    IHttp* http = nullptr;
    IReports* reports = nullptr;
    IDomains* domains = nullptr;
    ISlots* resourceSlots = nullptr;
    IPictures* pictures = nullptr;
};

/// Joins the services to the contract; the calling thread becomes the main thread. The caller owns them
/// and calls Uninstall before it destroys the first.
ZRHOST_API void Install(const Ports& ports);

/// Waits for calls of other threads that are inside a service, then parts the services from the contract.
ZRHOST_API void Uninstall();

/// Whether the services were uninstalled, and none installed since. Main thread.
ZRHOST_API bool HasEnded();

/// Whether the calling thread is the one that installed the ports.
ZRHOST_API bool OnMainThread();

/// The installed ports for the length of one contract call. Costs nothing on the main thread; elsewhere
/// it holds Uninstall off. For the contract's bodies, which stand in this library.
class PortsLock {
public:
    PortsLock() : m_bLocked(!t_bMainThread) {
        if (m_bLocked) {
            Lock();
        }
    }
    ~PortsLock() {
        if (m_bLocked) {
            Unlock();
        }
    }
    PortsLock(const PortsLock&) = delete;
    PortsLock& operator=(const PortsLock&) = delete;
    const Ports* operator->() const { return &s_ports; }

private:
    friend void Install(const Ports& ports);
    friend void Uninstall();
    friend bool OnMainThread();

    static void Lock();
    static void Unlock();

    static Ports s_ports;
    // Read at each contract call, so without the call that a thread_local of a shared library costs.
    static __thread bool t_bMainThread __attribute__((tls_model("initial-exec")));

    bool m_bLocked;
};

}  // namespace host
