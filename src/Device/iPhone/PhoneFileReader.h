#pragma once

#include "Base/Failure.h"
#include "Platform/PhoneFileService.h"

#include <QCoreApplication>

#include <deque>
#include <optional>
#include <vector>

class PhoneFiles;

/// The reads of one open file, one after another, a few of them asked for in advance. They never
/// go beyond the size that the phone reported, and where it is the whole file that is read, the
/// phone is asked at the end whether that was all of it.
///
/// A read that the phone refuses leaves out its stretch, and the next goes on behind it; but every
/// sequence ends. The file is closed with the object.
class PhoneFileReader
{
    Q_DECLARE_TR_FUNCTIONS(PhoneFileReader)

public:
    struct Stretch {
        qint64 first = 0;
        qint64 end = 0;
        bool isWholeFile = false; ///< then `end` is the size that the phone reported
        quint32 pieceSize = 0;
    };

    PhoneFileReader(const PhoneFiles& files, const QString& path, quint64 handle,
                    const Stretch& stretch);
    ~PhoneFileReader();
    PhoneFileReader(const PhoneFileReader&) = delete;
    PhoneFileReader& operator=(const PhoneFileReader&) = delete;

    /// Waits for the next piece. False when the sequence has ended.
    bool next(const PhoneFileService::GoOn& goOn);
    /// The piece; empty where a stretch was left out.
    [[nodiscard]] const QByteArray& bytes() const { return _bytes; }
    /// The end of the piece in the file.
    [[nodiscard]] qint64 position() const { return _position; }
    /// Why what was read is not what was to be read; none so far.
    [[nodiscard]] const std::optional<Failure>& problem() const { return _problem; }

private:
    struct Read {
        PhoneFileService::Asked asked;
        quint32 size = 0;
    };

    void ask();
    void goTo(qint64 position);
    bool isInPlace(const PhoneFileService::GoOn& goOn);
    bool take(QByteArray bytes);
    bool leaveOut(const PhoneAnswer& answer, quint32 size);
    bool end(const PhoneFileService::GoOn& goOn);
    void checkSize(const PhoneFileService::GoOn& goOn);
    void note(const QString& words);

    const PhoneFiles& _files;
    const QString _path;
    const quint64 _handle;
    const Stretch _stretch;
    qint64 _position;
    std::deque<Read> _ahead;
    qint64 _asked = 0;             ///< bytes, by those reads
    PhoneFileService::Asked _seek; ///< what must have gone well before the first of them counts
    PhoneFileService::Asked _sizeAgain;
    int _failures = 0; ///< in a row
    bool _hasEnded = false;
    std::optional<Failure> _problem;
    QByteArray _bytes;
};
