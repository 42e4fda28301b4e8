#include "support/phone/PhoneKeys.h"

#include "support/phone/PhonePlist.h"

#include <openssl/bio.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/rsa.h>
#include <openssl/ssl.h>
#include <openssl/x509.h>

namespace
{
constexpr int KeyBits = 2048;
constexpr long Year = 365L * 24 * 60 * 60;

using Key = std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)>;
using Certificate = std::unique_ptr<X509, decltype(&X509_free)>;
using Bytes = std::unique_ptr<BIO, decltype(&BIO_free)>;

Certificate selfSigned(EVP_PKEY* key)
{
    Certificate certificate(X509_new(), X509_free);
    X509_set_version(certificate.get(), 2);
    ASN1_INTEGER_set(X509_get_serialNumber(certificate.get()), 1);
    X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -Year);
    X509_gmtime_adj(X509_getm_notAfter(certificate.get()), 10 * Year);
    X509_set_pubkey(certificate.get(), key);
    X509_sign(certificate.get(), key, EVP_sha256());
    return certificate;
}

QByteArray text(BIO* bytes)
{
    char* start = nullptr;
    const long length = BIO_get_mem_data(bytes, &start);
    return QByteArray(start, length);
}
} // namespace

const PhoneKeys& PhoneKeys::shared()
{
    static const PhoneKeys keys;
    return keys;
}

PhoneKeys::PhoneKeys()
{
    const Key key(EVP_RSA_gen(KeyBits), EVP_PKEY_free);
    const Certificate certificate = selfSigned(key.get());

    const Bytes keyText(BIO_new(BIO_s_mem()), BIO_free);
    PEM_write_bio_PrivateKey_traditional(keyText.get(), key.get(), nullptr, nullptr, 0, nullptr,
                                         nullptr);
    _privateKey = text(keyText.get());
    const Bytes certificateText(BIO_new(BIO_s_mem()), BIO_free);
    PEM_write_bio_X509(certificateText.get(), certificate.get());
    _certificate = text(certificateText.get());

    _tls.reset(SSL_CTX_new(TLS_server_method()), SSL_CTX_free);
    // Old phones speak only what is considered unsafe by now.
    SSL_CTX_set_security_level(_tls.get(), 0);
    SSL_CTX_set_min_proto_version(_tls.get(), TLS1_VERSION);
    SSL_CTX_use_certificate(_tls.get(), certificate.get());
    SSL_CTX_use_PrivateKey(_tls.get(), key.get());
}

QByteArray PhoneKeys::pairRecord() const
{
    return PhonePlist()
        .setData("DeviceCertificate", _certificate)
        .setData("HostCertificate", _certificate)
        .setData("RootCertificate", _certificate)
        .setData("HostPrivateKey", _privateKey)
        .setData("RootPrivateKey", _privateKey)
        .setData("EscrowBag", QByteArray(32, 'e'))
        .set("HostID", QStringLiteral("5D1A2C3B-0000-4000-8000-000000000001"))
        .set("SystemBUID", QStringLiteral("5D1A2C3B-0000-4000-8000-000000000002"))
        .set("WiFiMACAddress", QStringLiteral("02:00:00:00:00:01"))
        .xml();
}
