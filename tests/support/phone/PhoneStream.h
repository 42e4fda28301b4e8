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

    /// The phone's half of an encryption that the computer begins.
    bool startTls(ssl_ctx_st* context);
    /// Waits for the computer to end the encryption and goes on in the clear.
    void stopTls();

    /// Ends the connection; whoever reads or writes finds out.
    void cut();
    [[nodiscard]] bool isCut() const { return _cut; }

private:
    int _socket;
    std::atomic<bool> _cut = false;
    ssl_st* _tls = nullptr;
};
