#pragma once

#include <QString>

class Device;

/// Whether a copy holds what the device reports, for a file or for a whole folder.
class CopiedSize
{
public:
    /// Asks the device before the copy begins.
    CopiedSize(Device& device, const QString& from);

    /// Empty when the copy `to` holds as many bytes as the device reported before and reports
    /// now, in each file of a folder; else what is wrong, in words. Both are asked for: a file
    /// that ends early while it is copied may well say afterwards that it was never longer.
    [[nodiscard]] QString difference(const QString& to) const;

    /// The bytes of a file, or of all files below a folder, on the computer.
    static qint64 onComputer(const QString& path);

private:
    Device& _device;
    QString _from;
    qint64 _reportedBefore;
};
