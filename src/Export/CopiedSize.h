#pragma once

#include <QString>

class Device;

/// Whether a copy holds what the device reports, for a file or for a whole folder.
namespace CopiedSize
{
/// The bytes of a file, or of all files below a folder, on the computer.
qint64 onComputer(const QString& path);

/// Empty when the copy `to` holds as many bytes as the device reports for `from`, in each file
/// of a folder; else what is wrong, in words.
QString difference(Device& device, const QString& from, const QString& to);
} // namespace CopiedSize
