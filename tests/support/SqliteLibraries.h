#pragma once

#include "support/SqliteWriter.h"
#include "support/TestLibrary.h"

/// Writes the SQLite libraries of phones as real ones look: many more tables, columns and
/// indexes than are read, ids over 32 bits, files below base locations.
namespace SqliteLibraries
{
/// The 64-bit id that a track's number becomes; its low 32 bits are the number.
qint64 pid(quint32 number);
/// The id of the primary container, and of a playlist by its place in the library.
qint64 primaryContainerPid();
qint64 playlistPid(std::size_t place);
/// Ids as a playlist packs them.
QByteArray packedPids(const std::vector<quint32>& numbers);

/// The empty tables alone.
void createLibrary(SqliteWriter& file);
void createLocations(SqliteWriter& file);
void createMediaLibrary(SqliteWriter& file);
void createRecordings(SqliteWriter& file);

/// "Library.itdb" and "Locations.itdb" in `folder`.
void writeLibrary(const QString& folder, const TestLibrary& library);

enum class Rows {
    InFile, ///< the log is folded in
    InLog   ///< all rows stand only in the write-ahead log beside the file
};
void writeMediaLibrary(const QString& path, const TestLibrary& library, Rows rows = Rows::InFile);

struct Recording {
    QVariant seconds;
    QVariant recorded; ///< seconds since 2001
    QVariant path;     ///< as the device stores it
};
void writeRecordings(const QString& path, const std::vector<Recording>& recordings);
} // namespace SqliteLibraries
