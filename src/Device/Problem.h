#pragma once

#include <QString>

#include <vector>

struct Failure;

/// Something that a reader could not read. Without a problem, what a reader gives is all that the
/// device holds: a 0 is a promise.
struct Problem {
    enum class Kind {
        Damaged,       ///< cut, or contradicting itself; what was read up to there is kept
        NotUnderstood, ///< there and not empty, but of a kind that is not known here
        Unreadable,    ///< no right, a read error, no room for the private copy
        CutOff,        ///< a limit ended the reading
        Lost           ///< the device went away or did not answer meanwhile
    };

    Kind kind = Kind::Damaged;
    QString words; ///< a sentence that names the library it is about and what is missing
    QString exact; ///< the exact text; null where there is none

    /// "damaged", "notUnderstood", "unreadable", "cutOff" or "lost".
    [[nodiscard]] QString kindName() const;
    /// The words, with the exact text in brackets where there is one.
    [[nodiscard]] QString text() const;
};

/// The problems of one reader, in the order they were met. The same words are kept once, and no
/// more than some dozens: a device may be damaged in a million places. Exact texts are made fit to
/// be shown.
class ProblemList
{
public:
    void add(Problem problem);
    void add(Problem::Kind kind, const QString& words, const QString& exact = {});
    /// A failure of the device or of the computer while something was read: lost where the device
    /// is gone, damaged where it contradicted itself, else unreadable.
    void add(const Failure& failure, const QString& words);

    [[nodiscard]] bool empty() const { return _problems.empty(); }
    [[nodiscard]] auto begin() const { return _problems.begin(); }
    [[nodiscard]] auto end() const { return _problems.end(); }
    [[nodiscard]] const std::vector<Problem>& all() const { return _problems; }

private:
    std::vector<Problem> _problems;
};

/// A problem and the reader that has it: "trackDb", "photoDb", "cameraRollDb", "voiceMemoDb" or
/// "bookDb".
struct ReaderProblem {
    QString reader;
    Problem problem;
};
