#include "Window/Update/WebCall.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>

namespace
{
constexpr int MostRedirects = 5;
} // namespace

QByteArray WebCall::get(const QUrl& address) const
{
    return send(QNetworkRequest(address), QByteArrayLiteral("GET"), {});
}

QByteArray WebCall::post(const QNetworkRequest& request, const QByteArray& body) const
{
    return send(request, QByteArrayLiteral("POST"), body);
}

QByteArray WebCall::send(QNetworkRequest request, const QByteArray& verb,
                         const QByteArray& body) const
{
    // Followed, but never from a protected address to an open one.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setMaximumRedirectsAllowed(MostRedirects);
    // A packed answer could be far larger than what came.
    request.setRawHeader("Accept-Encoding", "identity");
    QNetworkAccessManager manager;
    const std::unique_ptr<QNetworkReply> reply(verb == "GET" ? manager.get(request)
                                                             : manager.post(request, body));
    reply->setReadBufferSize(MostBytes + 1);

    QEventLoop loop;
    QByteArray answer;
    QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
    QObject::connect(reply.get(), &QIODevice::readyRead, &loop, [&] {
        answer += reply->readAll();
        if (answer.size() > MostBytes)
            loop.quit();
    });
    QTimer::singleShot(_limit, &loop, &QEventLoop::quit);
    {
        const std::stop_callback stopped(_stop, [&loop] {
            QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
        });
        if (!reply->isFinished())
            loop.exec();
    }
    if (!reply->isFinished() || reply->error() != QNetworkReply::NoError)
        return {};
    answer += reply->readAll();
    return answer.size() <= MostBytes ? answer : QByteArray();
}
