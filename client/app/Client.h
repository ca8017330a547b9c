#pragma once

#include <memory>

#include "ClientWindow.h"
#include "Composition.h"
#include "Options.h"
#include "log/FileLog.h"
#include "log/LibraryMessages.h"

/// The running client: log, services and window. One per process; main thread. The destructor destroys the window
/// before it ends the services, so that no widget calls a module afterwards.
class CClient {
public:
    /// Creates everything and shows and starts nothing. Modules and server are started after the window's first frame.
    explicit CClient(const COptions& options);
    ~CClient();
    CClient(const CClient&) = delete;
    CClient& operator=(const CClient&) = delete;

    CComposition& Composition() { return *m_pComposition; }
    CClientWindow& Window() { return *m_pWindow; }

private:
    const COptions m_options;
    CFileLog m_log;
    CLibraryMessages m_libraryMessages;
    std::unique_ptr<CComposition> m_pComposition;
    std::unique_ptr<CClientWindow> m_pWindow;
};
