#include "Base/Mailbox.h"

#include "Base/Fault.h"

#include <QCoreApplication>
#include <QEvent>

#include <iterator>

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
    std::vector<Letter> letters = takeAll();
    for (auto letter = letters.begin(); letter != letters.end(); ++letter) {
        try {
            // Each on its own: the letter behind one that throws may be the word that a job ended.
            Fault::guard(*letter);
        } catch (...) {
            putBack({std::move_iterator(letter + 1), std::move_iterator(letters.end())});
            throw; // nobody shows it here
        }
    }
    return true;
}

void Mailbox::putBack(std::vector<Letter> letters)
{
    if (letters.empty())
        return;
    const std::lock_guard lock(_mutex);
    // A letter that came meanwhile has posted its event already; another one finds nothing.
    _letters.insert(_letters.begin(), std::move_iterator(letters.begin()),
                    std::move_iterator(letters.end()));
    QCoreApplication::postEvent(this, new QEvent(LettersArrived));
}

std::vector<Mailbox::Letter> Mailbox::takeAll()
{
    const std::lock_guard lock(_mutex);
    return std::exchange(_letters, {});
}
