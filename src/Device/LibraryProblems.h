#pragma once

#include "Device/Problem.h"

#include <QCoreApplication>

struct Failure;

/// Says in whole sentences what was wrong with one of a device's libraries, into the list of the
/// reader that it belongs to. The list must outlive it.
class LibraryProblems
{
    Q_DECLARE_TR_FUNCTIONS(LibraryProblems)
public:
    enum class Library { Music, Photos, CameraRoll, VoiceMemos, Books };

    LibraryProblems(Library library, ProblemList& problems);

    /// There is what it should describe, and no library.
    void isMissing(const QString& where) const;
    /// Its file has no bytes.
    void isEmpty() const;
    /// It contradicts itself or is cut. What could be read of it is kept.
    void isDamaged(const QString& exact) const;
    /// The same, where it is known how many of its tracks, photos or recordings there should be.
    void isDamaged(qint64 read, qint64 all, const QString& exact) const;
    /// It is there, and of a kind that is not known.
    void isNotUnderstood(const QString& exact) const;
    /// A limit ended the reading, or stepped over a part.
    void isCutOff(const QString& exact) const;
    /// The device or the computer failed; what was read before is kept.
    void cannotBeRead(const Failure& failure) const;
    /// What stands in the write-ahead log of its database could not be had.
    void lacksNewestChanges(const Failure& failure) const;

private:
    [[nodiscard]] QString missing() const;
    [[nodiscard]] QString empty() const;
    [[nodiscard]] QString damaged() const;
    [[nodiscard]] QString damaged(qint64 read, qint64 all) const;
    [[nodiscard]] QString notUnderstood() const;
    [[nodiscard]] QString cutOff() const;
    [[nodiscard]] QString unreadable() const;
    [[nodiscard]] QString older() const;

    Library _library;
    ProblemList* _problems;
};
