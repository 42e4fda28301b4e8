#include "support/phone/PhoneStream.h"

#include <openssl/ssl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>

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
    const char* next = bytes.constData();
    auto left = std::size_t(bytes.size());
    while (left > 0) {
        const ssize_t count =
            _tls ? SSL_write(_tls, next, int(left)) : send(_socket, next, left, MSG_NOSIGNAL);
        if (count <= 0) {
            if (!_tls && count < 0 && errno == EINTR)
                continue;
            return false;
        }
        next += count;
        left -= std::size_t(count);
    }
    return true;
}

bool PhoneStream::startTls(ssl_ctx_st* context)
{
    _tls = SSL_new(context);
    SSL_set_fd(_tls, _socket);
    return SSL_accept(_tls) == 1;
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
