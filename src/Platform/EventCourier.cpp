#include "Platform/EventCourier.h"

#include <QCoreApplication>
#include <QEvent>

namespace
{
const auto MessagesArrived = QEvent::Type(QEvent::registerEventType());
} // namespace

void EventCourier::post(Message message)
{
    bool wasEmpty = false;
    {
        const std::lock_guard lock(_mutex);
        wasEmpty = _messages.empty();
        _messages.push_back(std::move(message));
    }
    // A bare event wakes the thread; what is told stands in our own queue behind our own lock.
    if (wasEmpty)
        QCoreApplication::postEvent(this, new QEvent(MessagesArrived));
}

bool EventCourier::event(QEvent* event)
{
    if (event->type() != MessagesArrived)
        return QObject::event(event);
    for (const Message& message : takeAll())
        message();
    return true;
}

std::vector<EventCourier::Message> EventCourier::takeAll()
{
    const std::lock_guard lock(_mutex);
    return std::exchange(_messages, {});
}
