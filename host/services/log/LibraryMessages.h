#pragma once

#include <QtGlobal>

/// While it exists, messages of the toolkit and of protobuf are log lines, of the modules Host.Qt and Host.Protobuf.
/// The toolkit's former handler gets them too. One at a time; main thread. Messages come from any thread.
class CLibraryMessages {
public:
    CLibraryMessages();
    ~CLibraryMessages();
    CLibraryMessages(const CLibraryMessages&) = delete;
    CLibraryMessages& operator=(const CLibraryMessages&) = delete;
};
