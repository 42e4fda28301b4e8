#include "Base/Mailbox.h"

#include <QCoreApplication>
#include <QEvent>

namespace
{
const auto LettersArrived = QEvent::Type(QEvent::registerEventType());
} // namespace

void Mailbox::post(Letter letter)
{
    bool wasEmpty = false;
    {
        const std::lock_guard lock(_mutex);
        wasEmpty = _letters.empty();
        _letters.push_back(std::move(letter));
    }
    // A bare event wakes the thread; what is told stands in our own queue behind our own lock.
    if (wasEmpty)
        QCoreApplication::postEvent(this, new QEvent(LettersArrived));
}

bool Mailbox::event(QEvent* event)
{
    if (event->type() != LettersArrived)
        return QObject::event(event);
    for (const Letter& letter : takeAll())
        letter();
    return true;
}

std::vector<Mailbox::Letter> Mailbox::takeAll()
{
    const std::lock_guard lock(_mutex);
    return std::exchange(_letters, {});
}
