#pragma once

#include <QString>

/// How one copy out of a device ended. Only a stop is the answer NO that ends a whole job; what
/// else may go wrong is kept here for the report, and the job goes on.
struct CopyResult {
    enum class End {
        Whole,      ///< read to its end and written
        Stopped,    ///< the delegate asked to stop; what was written until then stays
        Missing,    ///< there is no such file to open; nothing was created
        Incomplete, ///< the source could not be read to its end
        Failed,     ///< the destination could not be created or written
        Taken       ///< something has the destination's name, and was not to be replaced
    };

    End end = End::Whole;
    QString why; ///< the system's words, for all ends but the first two

    /// The answer: false only when a stop was asked for.
    explicit operator bool() const { return end != End::Stopped; }
};
