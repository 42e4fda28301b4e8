#pragma once

#include "Device/LibraryProblems.h"
#include "Device/sql/Statement.h"

#include <memory>
#include <optional>

class TemporaryCopy;

/// A copied database, open for reading. What keeps it from being read is said in the words of
/// its library: that the copy is not whole, that it is no database, that its end is missing.
class Database
{
public:
    Database(const TemporaryCopy& copy, const LibraryProblems& problems);

    /// One that could not be prepared has no rows, and has said why.
    [[nodiscard]] Statement prepare(const Query& query) const;
    /// Whether there is a table of this name, written in this way; nothing where that cannot be
    /// known.
    [[nodiscard]] std::optional<bool> hasTable(const char* name) const;
    [[nodiscard]] const LibraryProblems& problems() const { return _problems; }

private:
    LibraryProblems _problems;
    std::unique_ptr<Connection> _connection; ///< null without a file
};
