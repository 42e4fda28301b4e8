#pragma once

#include <QByteArray>
#include <QString>

class Device;

/// The file of a player's binary database. Every length in it is a 32-bit number, so nothing
/// larger can be one of these databases, and copying it would only fill the disk.
namespace ItdbFile
{
/// Leaves a copy in the log folder for diagnosis.
void keepForDiagnosis(Device& device, const QString& path);
/// The whole file; empty when it is none of these.
QByteArray read(Device& device, const QString& path);
} // namespace ItdbFile
