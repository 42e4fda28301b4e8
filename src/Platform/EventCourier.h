#pragma once

#include <QObject>

#include <functional>
#include <mutex>
#include <vector>

/// The way from a library's own thread to the event loop: what is posted on any thread is run on
/// the thread that the courier lives on, in the order it came. What is not delivered when the
/// courier goes is dropped.
class EventCourier final : public QObject
{
public:
    using Message = std::function<void()>;

    void post(Message message);

    bool event(QEvent* event) override;

private:
    std::vector<Message> takeAll();

    std::mutex _mutex;
    std::vector<Message> _messages;
};
