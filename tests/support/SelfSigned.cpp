#include "support/SelfSigned.h"

#include <openssl/bio.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <memory>

namespace {

template <class What, class Write>
QByteArray Pem(What* what, Write write) {
    const std::unique_ptr<BIO, decltype(&BIO_free)> out(BIO_new(BIO_s_mem()), &BIO_free);
    write(out.get(), what);
    char* bytes = nullptr;
    const long count = BIO_get_mem_data(out.get(), &bytes);
    return QByteArray(bytes, int(count));
}

void Extend(X509* certificate, int kind, const std::string& value) {
    X509_EXTENSION* extension = X509V3_EXT_conf_nid(nullptr, nullptr, kind, value.c_str());
    X509_add_ext(certificate, extension, -1);
    X509_EXTENSION_free(extension);
}

}  // namespace

SelfSigned NewSelfSigned(const char* address) {
    constexpr unsigned kBits = 2048;
    constexpr long kDay = 24 * 3600;
    const std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> key(EVP_RSA_gen(kBits), &EVP_PKEY_free);
    const std::unique_ptr<X509, decltype(&X509_free)> certificate(X509_new(), &X509_free);
    X509_set_version(certificate.get(), 2);
    ASN1_INTEGER_set(X509_get_serialNumber(certificate.get()), 1);
    X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -kDay);
    X509_gmtime_adj(X509_getm_notAfter(certificate.get()), kDay);
    X509_set_pubkey(certificate.get(), key.get());
    X509_NAME* name = X509_get_subject_name(certificate.get());
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, reinterpret_cast<const unsigned char*>("test"), -1, -1, 0);
    X509_set_issuer_name(certificate.get(), name);
    Extend(certificate.get(), NID_subject_alt_name, std::string("IP:") + address);
    Extend(certificate.get(), NID_basic_constraints, "critical,CA:TRUE");
    X509_sign(certificate.get(), key.get(), EVP_sha256());
    return {QSslCertificate(Pem(certificate.get(), [](BIO* out, X509* what) { PEM_write_bio_X509(out, what); })),
            QSslKey(Pem(key.get(),
                        [](BIO* out, EVP_PKEY* what) {
                            PEM_write_bio_PrivateKey(out, what, nullptr, nullptr, 0, nullptr, nullptr);
                        }),
                    QSsl::Rsa)};
}
