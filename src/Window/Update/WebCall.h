#pragma once

#include <QByteArray>
#include <QNetworkRequest>

#include <chrono>
#include <stop_token>

/// One request on the calling thread, which waits for its end. Whatever goes wrong, a status that
/// is no success included, gives null.
class WebCall
{
public:
    /// In all, from the look-up of the name to the last byte.
    static constexpr std::chrono::milliseconds TimeLimit = std::chrono::seconds(20);
    /// An answer of more bytes counts as none.
    static constexpr qint64 MostBytes = 64 * 1024;

    /// Gives up when the stop is requested, or after the limit.
    explicit WebCall(std::stop_token stop, std::chrono::milliseconds limit = TimeLimit)
        : _stop(std::move(stop))
        , _limit(limit)
    {
    }

    [[nodiscard]] QByteArray get(const QUrl& address) const;
    [[nodiscard]] QByteArray post(const QNetworkRequest& request, const QByteArray& body) const;

private:
    QByteArray send(QNetworkRequest request, const QByteArray& verb, const QByteArray& body) const;

    std::stop_token _stop;
    std::chrono::milliseconds _limit;
};
