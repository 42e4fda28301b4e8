#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>

#include <chrono>

/// Runs the event loop until `condition` holds; false when it does not within the limit.
template <typename Condition>
bool waitUntil(Condition condition, std::chrono::milliseconds limit = std::chrono::seconds(30))
{
    const QDeadlineTimer deadline(limit);
    while (!condition()) {
        const bool isOver = deadline.hasExpired();
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
        if (isOver) // what came meanwhile, and waited, counts
            return condition();
    }
    return true;
}
