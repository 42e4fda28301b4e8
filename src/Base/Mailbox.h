#pragma once

#include <QObject>

#include <functional>
#include <mutex>
#include <vector>

/// The one way from a thread to the event loop: what is posted on any thread is run on the thread
/// that the mailbox lives on, in the order it came, from the event loop. A letter that throws is
/// a fault of its own: those behind it are delivered all the same. What is not delivered when the
/// mailbox goes is dropped.
class Mailbox final : public QObject
{
public:
    using Letter = std::function<void()>;

    void post(Letter letter);

    bool event(QEvent* event) override;

private:
    std::vector<Letter> takeAll();
    /// Letters that could not be run yet, before all that came since.
    void putBack(std::vector<Letter> letters);

    std::mutex _mutex;
    std::vector<Letter> _letters;
};
