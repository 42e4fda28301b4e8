#include "support/LoopbackServer.h"

#include <QTcpSocket>

#include <memory>
#include <stdexcept>

LoopbackServer::LoopbackServer(Answer answer)
    : _answer(std::move(answer))
{
    if (!_server.listen(QHostAddress::LocalHost))
        throw std::runtime_error("no port is free");
    QObject::connect(&_server, &QTcpServer::newConnection, &_server, [this] { accept(); });
}

QUrl LoopbackServer::address(const QString& pathAndQuery) const
{
    return QUrl("http://" + host() + pathAndQuery);
}

QString LoopbackServer::host() const
{
    return QString("127.0.0.1:%1").arg(_server.serverPort());
}

QByteArray LoopbackServer::answer(const QByteArray& body, const QByteArray& status)
{
    return "HTTP/1.1 " + status + "\r\nContent-Type: text/xml; charset=utf-8\r\nContent-Length: " +
           QByteArray::number(body.size()) + "\r\nConnection: close\r\n\r\n" + body;
}

QByteArray LoopbackServer::redirect(int status, const QUrl& target)
{
    return "HTTP/1.1 " + QByteArray::number(status) +
           " Elsewhere\r\nLocation: " + target.toEncoded() +
           "\r\nContent-Length: 0\r\nConnection: close\r\n\r\n";
}

void LoopbackServer::accept()
{
    while (QTcpSocket* socket = _server.nextPendingConnection()) {
        const auto received = std::make_shared<QByteArray>();
        QObject::connect(socket, &QTcpSocket::readyRead, socket,
                         [this, socket, received] { read(socket, *received); });
        QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    }
}

void LoopbackServer::read(QTcpSocket* socket, QByteArray& received)
{
    received += socket->readAll();
    const qsizetype head = received.indexOf("\r\n\r\n");
    if (head < 0)
        return;
    Request request;
    const QByteArrayList lines = received.first(head).split('\n');
    const QByteArrayList words = lines.first().split(' ');
    request.method = words.value(0);
    request.path = words.value(1);
    for (const QByteArray& line : lines.sliced(1)) {
        const qsizetype colon = line.indexOf(':');
        request.headers[line.first(colon).trimmed().toLower()] = line.sliced(colon + 1).trimmed();
    }
    request.body = received.sliced(head + 4);
    if (request.body.size() < request.headers.value("content-length").toLongLong())
        return;
    received.clear();
    _requests.push_back(request);
    const QByteArray bytes = _answer(request);
    if (bytes.isNull())
        return;
    socket->write(bytes);
    socket->disconnectFromHost();
}
