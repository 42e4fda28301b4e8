#pragma once

#include "Base/Mailbox.h"

#include <QString>

struct RaisedException;

/// Turns every exception that leaves a slot, a job or another thread's work into a report for the
/// person. Made once, on the window's thread, after the application object; until it is destroyed
/// it is the program's handler of such faults, on whatever thread they are raised.
class FaultHandler
{
public:
    /// Reports are to be sent to this address.
    explicit FaultHandler(QString emailAddress);
    ~FaultHandler();
    FaultHandler(const FaultHandler&) = delete;
    FaultHandler& operator=(const FaultHandler&) = delete;

    /// Shows a report when the exception deserves one. Always true: it is dealt with.
    bool shouldHandleException(const RaisedException& exception);
    /// Always true: each goes to the standard error stream.
    [[nodiscard]] static bool shouldLogException(const RaisedException& exception);
    /// Whether people are to see it. Some say no more than that a picture was damaged.
    [[nodiscard]] static bool shouldDisplayException(const RaisedException& exception);

    /// Shows what runs of the program that ended badly have left in the folder, once.
    void showReportsLeftIn(const QString& folder);

private:
    void handleCurrentException() noexcept;

    QString _emailAddress;
    Mailbox _mailbox;
};
