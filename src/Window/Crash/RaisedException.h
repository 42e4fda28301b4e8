#pragma once

#include <QString>

#include <vector>

/// An exception as the crash report tells it, of whatever type it was.
struct RaisedException {
    QString name;
    QString reason;
    /// Of the place where it was raised, innermost first; none when nobody kept them.
    std::vector<void*> callStackReturnAddresses;

    /// The exception that the calling `catch`, or the handler of the program's end, deals with.
    /// One that is not ours has its type for a name.
    static RaisedException current();
};
