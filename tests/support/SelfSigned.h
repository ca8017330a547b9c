#pragma once

#include <QSslCertificate>
#include <QSslKey>

/// A certificate that no authority signed, and its key, generated for one test.
struct SelfSigned {
    QSslCertificate certificate;
    QSslKey key;
};

/// Returns a certificate for a server at this IPv4 address.
SelfSigned NewSelfSigned(const char* address);
