#pragma once

#include <QByteArray>

#include <atomic>
#include <cstddef>

struct ssl_ctx_st;
struct ssl_st;

/// One connection to a simulated phone: a socket, in the clear or encrypted. One thread reads and
/// writes; any thread may cut it.
class PhoneStream
{
public:
    explicit PhoneStream(int socket);
    ~PhoneStream();
    PhoneStream(const PhoneStream&) = delete;
    PhoneStream& operator=(const PhoneStream&) = delete;

    /// All of `size` bytes, or false at the end of the connection.
    bool read(void* bytes, std::size_t size);
    /// `size` bytes, or a null array.
    QByteArray read(std::size_t size);
    bool write(const QByteArray& bytes);
    /// From now on the link carries so many bytes in a millisecond, be they encrypted; -1 for any
    /// number.
    void setPace(qint64 bytes) { _pace = bytes; }
    /// From now on nothing passes once so many bytes have, be they encrypted; -1 for no end.
    void setLimit(qint64 bytes) { _limit = bytes; }

    /// The phone's half of an encryption that the computer begins.
    bool startTls(ssl_ctx_st* context);
    /// Waits for the computer to end the encryption and goes on in the clear.
    void stopTls();

    /// Ends the connection; whoever reads or writes finds out.
    void cut();
    [[nodiscard]] bool isCut() const { return _cut; }

private:
    bool writeEncrypted(const char* bytes, std::size_t size);
    bool send(const char* bytes, std::size_t size);
    bool flush();

    int _socket;
    qint64 _pace = -1;
    qint64 _limit = -1;
    std::atomic<bool> _cut = false;
    ssl_st* _tls = nullptr;
};
