#pragma once

#include <QString>

/// Why something was not done: a kind that code can test, words that people can read, and the
/// exact text of whoever refused it.
struct Failure {
    enum class Kind {
        Missing,    ///< there is no such thing
        Refused,    ///< it is there and is not touched: a link, a pipe, a path that leads out
        Unreadable, ///< it is there and cannot be read: no right, a bad block
        Unwritable, ///< the destination cannot be made or written; no room, among others
        Lost,       ///< the device has gone or does not answer: nothing more comes from it
        Damaged,    ///< it was read and contradicts itself
        Stopped     ///< somebody asked for it
    };

    Kind kind = Kind::Unreadable;
    QString words; ///< a sentence without a full stop
    QString exact; ///< the system's or the library's text; null where there is none

    /// The words, with the exact text behind them where it says something else.
    [[nodiscard]] QString text() const
    {
        return exact.isEmpty() || exact == words ? words
                                                 : words + QStringLiteral(" (%1)").arg(exact);
    }
};
