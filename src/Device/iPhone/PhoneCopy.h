#pragma once

#include "Device/CopyResult.h"
#include "Platform/File.h"

#include <QString>

#include <optional>

class AFCDevice;
class AFCFileReader;

/// One copy of a file or of a whole folder out of a phone, each chunk announced to the devices'
/// delegate before it is written.
class PhoneCopy
{
public:
    /// `mode` says what becomes of a file that has the destination's name.
    PhoneCopy(AFCDevice& phone, std::optional<int> progress, File::Mode mode);

    CopyResult copy(const QString& from, const QString& to);

private:
    /// How deep a walk is: below its start, and through how many links.
    struct Depth {
        int folders = 0;
        int links = 0;
    };

    CopyResult copyFolder(const QString& from, const QString& to, Depth depth);
    CopyResult copyEntry(const QString& from, const QString& to, Depth depth);
    CopyResult copyFile(const QString& from, const QString& to, double total);
    CopyResult copyChunks(AFCFileReader& reader, double total, File& destination);
    [[nodiscard]] bool isLost() const;

    AFCDevice& _phone;
    std::optional<int> _progress;
    File::Mode _mode;
    int _entries = 0;
};
