#pragma once

#include <QString>

#include <sqlite3.h>

#include <chrono>
#include <memory>
#include <set>
#include <string>
#include <utility>

/// A connection to a copied database. The file is untrusted: its schema can call nothing, recurse
/// nowhere and run only so long, a value can be no longer than the file, and what is read for a
/// table is a table with columns that are stored.
///
/// It is opened for writing all the same, since SQLite has to fold in the log of a database in
/// write-ahead mode.
class Connection
{
public:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
    };
    using Prepared = std::unique_ptr<sqlite3_stmt, Finalize>;

    /// What one statement may cost, measured by the size of its database: what no table of that
    /// size can hold comes from a schema that means harm.
    struct Limits {
        qint64 rows = 0;
        qint64 bytes = 0; ///< of texts and blobs
    };

    /// Not open where there is no database; then `error` and `errorText` say why.
    Connection(const QString& file, qint64 size);
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    [[nodiscard]] bool isOpen() const { return bool(_database); }
    /// Null when the statement cannot be prepared, or reads what no table stores.
    [[nodiscard]] Prepared prepare(const QByteArray& sql);
    /// SQLite's code, without its details, for what failed last.
    [[nodiscard]] int error() const { return _error; }
    [[nodiscard]] QString errorText() const { return _errorText; }
    /// Steps or steps again a statement of this connection; keeps the error where it fails.
    int step(sqlite3_stmt* statement);
    [[nodiscard]] const Limits& limits() const { return _limits; }
    /// Whether there is something left for work besides the running of statements.
    [[nodiscard]] bool spend() { return _budget->spend(); }

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
    /// Table and column, as a statement names them.
    using Columns = std::set<std::pair<std::string, std::string>>;

    static int authorize(void* self, int action, const char* third, const char* fourth,
                         const char* database, const char* view);
    void harden(qint64 size);
    bool areStored(const Columns& columns);
    int note(int result);

    std::unique_ptr<Budget> _budget; // outlives the connection that looks at it
    std::unique_ptr<sqlite3, Close> _database;
    Limits _limits;
    Columns _read;               ///< by the statement that is being prepared
    bool _asksForSchema = false; ///< a statement of our own is being prepared
    int _error = SQLITE_OK;
    QString _errorText;
};
