#pragma once

#include <QSslCertificate>
#include <QSslKey>

/// A certificate that nobody vouches for, with its key; both are made for the length of a test.
struct SelfSigned {
    QSslCertificate certificate;
    QSslKey key;
};

/// For a server that is reached at this address of version 4.
SelfSigned NewSelfSigned(const char* address);
