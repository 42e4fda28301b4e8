#pragma once

#include <QByteArray>
#include <QHash>
#include <QTcpServer>
#include <QUrl>

#include <functional>
#include <vector>

class QTcpSocket;

/// A web server on this computer's own address, on the test's thread: it writes down what it is
/// asked and answers what the test says, byte by byte.
class LoopbackServer
{
public:
    struct Request {
        QByteArray method;
        QByteArray path;
        QHash<QByteArray, QByteArray> headers; ///< names in lower case
        QByteArray body;
    };
    /// The whole answer, status line and all, after which the connection is closed; null for no
    /// answer at all.
    using Answer = std::function<QByteArray(const Request& request)>;

    explicit LoopbackServer(Answer answer);

    [[nodiscard]] QUrl address(const QString& pathAndQuery) const;
    [[nodiscard]] QString host() const;
    [[nodiscard]] const std::vector<Request>& requests() const { return _requests; }

    /// An answer with a body.
    static QByteArray answer(const QByteArray& body, const QByteArray& status = "200 OK");
    static QByteArray redirect(int status, const QUrl& target);

private:
    void accept();
    void read(QTcpSocket* socket, QByteArray& received);

    Answer _answer;
    std::vector<Request> _requests;
    QTcpServer _server;
};
