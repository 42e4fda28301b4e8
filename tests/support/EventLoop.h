#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>

/// Runs the event loop until `condition` holds; false when it does not within ten seconds.
template <typename Condition>
bool waitUntil(Condition condition)
{
    const QDeadlineTimer deadline(10000);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    }
    return true;
}
