#pragma once

#include <QByteArray>

#include <memory>

struct ssl_ctx_st;

/// The keys and certificates that a computer and its phones have exchanged when they paired. One
/// set serves all simulated phones.
class PhoneKeys
{
public:
    static const PhoneKeys& shared();

    /// The property list that the computer keeps of a pairing.
    [[nodiscard]] QByteArray pairRecord() const;
    /// For the phone's side of encrypted connections, old versions included.
    [[nodiscard]] ssl_ctx_st* tls() const { return _tls.get(); }

private:
    PhoneKeys();

    QByteArray _privateKey;
    QByteArray _certificate;
    std::shared_ptr<ssl_ctx_st> _tls;
};
