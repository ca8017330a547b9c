#pragma once

#include "framework/export.h"

class IChannel;
class IClientState;
class IHttp;
class ILocalStore;
class ILog;
class IMessageBus;
class IPictures;
class IPoster;
class IReports;
class ITimeAndRandom;
class IUrlOpener;
class IWebEngine;

namespace host {

/// The services behind the contract. Any may be null: its operations then do nothing and return their empty value.
struct Ports {
    ILog* log = nullptr;
    IPoster* poster = nullptr;
    IMessageBus* bus = nullptr;
    IChannel* channel = nullptr;
    ILocalStore* store = nullptr;
    IClientState* state = nullptr;
    ITimeAndRandom* timeAndRandom = nullptr;
    IUrlOpener* urls = nullptr;
    IHttp* http = nullptr;
    IReports* reports = nullptr;
    IPictures* pictures = nullptr;
    IWebEngine* web = nullptr;
};

/// Connects the services to the contract. The calling thread becomes the main thread. The caller keeps ownership and
/// calls Uninstall before it destroys the first service.
ZRHOST_API void Install(const Ports& ports);

/// Disconnects the services from the contract, after calls of other threads into a service have returned.
ZRHOST_API void Uninstall();

/// Returns whether the services were uninstalled and none installed since. Main thread.
ZRHOST_API bool HasEnded();

/// Returns whether the calling thread is the one that installed the ports. Any thread.
ZRHOST_API bool OnMainThread();

/// The installed ports for the duration of one contract call. Any thread: on the main thread it locks nothing,
/// elsewhere it delays Uninstall. For the bodies of the contract, which are in this library.
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
    // Each contract call reads it. This model avoids the function call of a thread_local in a shared library.
    static __thread bool t_bMainThread __attribute__((tls_model("initial-exec")));

    bool m_bLocked;
};

}  // namespace host
