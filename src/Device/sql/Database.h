#pragma once

#include "Base/Utility.h"

#include <QString>

#include <sqlite3.h>

#include <chrono>
#include <memory>

class TemporaryCopy;

/// What one statement may cost, measured by the size of its database: what no table of that size
/// can hold comes from a schema that means harm.
struct StatementLimits {
    qint64 rows = 0;
    qint64 bytes = 0; ///< of texts and blobs
};

/// A prepared statement. One that could not be prepared has no rows.
class Statement
{
public:
    Statement(sqlite3* database, const char* sql, StatementLimits limits);

    /// Goes on to the next row; false at the end, and where damage or a limit ends it.
    bool step();

    /// Column by position. What the row does not have reads as NULL does.
    [[nodiscard]] int number(int column) const;
    /// The low 32 bits of a 64-bit id: the readers know ids by no more than these.
    [[nodiscard]] qint32 id(int column) const;
    [[nodiscard]] double real(int column) const;
    /// UTF-8; valid until the next step. NULL gives no bytes.
    [[nodiscard]] QByteArrayView utf8(int column);
    /// As Utility::stringWithStmt.
    [[nodiscard]] QString text(int column);
    [[nodiscard]] QDateTime date(int column) const;
    /// Valid until the next step.
    [[nodiscard]] ByteView blob(int column);

private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
    };
    void spend(qint64 bytes) { _limits.bytes -= bytes; }

    std::unique_ptr<sqlite3_stmt, Finalize> _statement;
    StatementLimits _limits;
};

/// A copied database, open for reading. The file is untrusted: its schema can call nothing,
/// recurse nowhere and run only so long, and a value can be no longer than the file.
///
/// It is opened for writing all the same, since SQLite has to fold in the log of a database in
/// write-ahead mode.
class Database
{
public:
    explicit Database(const TemporaryCopy& copy);

    [[nodiscard]] Statement prepare(const char* sql) const;

private:
    struct Close {
        void operator()(sqlite3* database) const noexcept { sqlite3_close(database); }
    };
    /// What is left of what the connection may cost; SQLite asks it in between.
    struct Budget {
        std::chrono::steady_clock::time_point deadline;
        qint64 checks = 0;
        [[nodiscard]] bool spend();
    };

    void harden(qint64 size);

    std::unique_ptr<Budget> _budget; // outlives the connection that looks at it
    std::unique_ptr<sqlite3, Close> _database;
    StatementLimits _limits;
};
