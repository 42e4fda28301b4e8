#pragma once

#include <QApplication>

/// The application object of the window program. An exception that leaves a slot or an event's
/// handler is a fault that the person sees, and the program goes on with the next event.
class Application final : public QApplication
{
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override;
};
