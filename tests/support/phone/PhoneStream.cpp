#include "support/phone/PhoneStream.h"

#include <openssl/ssl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <thread>

PhoneStream::PhoneStream(int socket)
    : _socket(socket)
{
}

PhoneStream::~PhoneStream()
{
    SSL_free(_tls);
    close(_socket);
}

bool PhoneStream::read(void* bytes, std::size_t size)
{
    auto* next = static_cast<char*>(bytes);
    while (size > 0) {
        const ssize_t count = _tls ? SSL_read(_tls, next, int(size)) : recv(_socket, next, size, 0);
        if (count <= 0) {
            if (!_tls && count < 0 && errno == EINTR)
                continue;
            return false;
        }
        next += count;
        size -= std::size_t(count);
    }
    return true;
}

QByteArray PhoneStream::read(std::size_t size)
{
    QByteArray bytes(qsizetype(size), Qt::Uninitialized);
    return read(bytes.data(), size) ? bytes : QByteArray();
}

bool PhoneStream::write(const QByteArray& bytes)
{
    const auto size = std::size_t(bytes.size());
    return size == 0 ||
           (_tls ? writeEncrypted(bytes.constData(), size) : send(bytes.constData(), size));
}

bool PhoneStream::writeEncrypted(const char* bytes, std::size_t size)
{
    return SSL_write(_tls, bytes, int(size)) == int(size) && flush();
}

/// Sends what the encryption has made.
bool PhoneStream::flush()
{
    char* bytes = nullptr;
    BIO* const made = SSL_get_wbio(_tls);
    const long size = BIO_get_mem_data(made, &bytes);
    const bool done = size <= 0 || send(bytes, std::size_t(size));
    (void)BIO_reset(made);
    return done;
}

bool PhoneStream::send(const char* bytes, std::size_t size)
{
    while (size > 0) {
        std::size_t atOnce = _pace > 0 ? std::min(size, std::size_t(_pace)) : size;
        if (_limit >= 0)
            atOnce = std::min(atOnce, std::size_t(_limit));
        if (atOnce == 0 && !_cut) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
            continue;
        }
        const ssize_t count = ::send(_socket, bytes, atOnce, MSG_NOSIGNAL);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        bytes += count;
        size -= std::size_t(count);
        if (_limit >= 0)
            _limit -= count;
        if (_pace > 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

bool PhoneStream::startTls(ssl_ctx_st* context)
{
    _tls = SSL_new(context);
    SSL_set_fd(_tls, _socket);
    if (SSL_accept(_tls) != 1)
        return false;
    // From here on the link may be slow within a record, which only we can make it.
    SSL_set0_wbio(_tls, BIO_new(BIO_s_mem()));
    return true;
}

void PhoneStream::stopTls()
{
    if (!_tls)
        return;
    char byte = 0;
    while (SSL_read(_tls, &byte, 1) > 0) { // until the computer's word that it ends
    }
    SSL_free(_tls);
    _tls = nullptr;
}

void PhoneStream::cut()
{
    _cut = true;
    shutdown(_socket, SHUT_RDWR);
}
