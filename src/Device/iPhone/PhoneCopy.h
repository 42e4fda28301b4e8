#pragma once

#include "Device/CopyResult.h"
#include "Device/iPhone/PhoneFiles.h"
#include "Platform/File.h"

#include <QCoreApplication>
#include <QString>

#include <optional>

class PhoneFileReader;

/// One copy of a file or of a whole folder out of a phone, each chunk announced to the devices'
/// delegate before it is written. While the phone lets wait, the delegate is asked, so that a stop
/// never waits for the phone.
class PhoneCopy
{
    Q_DECLARE_TR_FUNCTIONS(PhoneCopy)

public:
    /// `mode` says what becomes of a file that has the destination's name.
    PhoneCopy(PhoneFiles& files, std::optional<int> progress, File::Mode mode);

    /// A file is created with its first bytes, and a folder once its listing is there: what cannot
    /// be read leaves nothing behind. A stop takes away the folder that it interrupts.
    CopyResult copy(const QString& from, const QString& to);

private:
    /// How deep a walk is: below its start, and through how many links.
    struct Depth {
        int folders = 0;
        int links = 0;
    };
    using Entries = std::vector<PhoneFiles::Entry>;

    CopyResult copyEntry(const QString& from, const QString& to, const FileInfo& info, Depth depth);
    CopyResult copyFolder(const QString& from, const QString& to, Depth depth);
    CopyResult copyEntries(const QString& from, const QString& to, const Entries& entries,
                           Depth depth);
    CopyResult copyFile(const QString& from, const QString& to, const FileInfo& info);
    CopyResult copyChunks(PhoneFileReader& reader, const QString& to, double size);
    /// Both answer false when the delegate asks to stop.
    [[nodiscard]] bool announce() const;
    [[nodiscard]] bool goesOn() const;
    [[nodiscard]] CopyResult neverEnds() const;
    /// How a copy ended that `failure` ended before anything was written, or after.
    static CopyResult notBegun(const Failure& failure);
    static CopyResult broken(const Failure& failure);
    static CopyResult unwritten(const File& destination);
    [[nodiscard]] CopyResult cutShort() const;

    PhoneFiles& _files;
    const PhoneFiles::GoOn _goOn;
    const double _progress; ///< before this copy
    const File::Mode _mode;
    double _fraction = 0; ///< of the file that is being copied
    int _entries = 0;
};
