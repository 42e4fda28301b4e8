#pragma once

#include <QString>

#include <functional>
#include <memory>

struct sqlite3;
struct sqlite3_stmt;

/// A device's SQLite database, copied to a private file, opened for reading only and with
/// nothing in it trusted. One thread at a time.
class PhotoQuery
{
public:
    /// Opens the copy `path`; ask `isOpen` how that went.
    explicit PhotoQuery(const QString& path);
    ~PhotoQuery();
    PhotoQuery(const PhotoQuery&) = delete;
    PhotoQuery& operator=(const PhotoQuery&) = delete;

    [[nodiscard]] bool isOpen() const;

    using Row = std::function<void(sqlite3_stmt* statement)>;
    /// Runs a statement and gives each row. One that cannot be prepared gives none and answers
    /// false. Damage, or more work than the size of the file explains, ends the rows.
    bool each(const char* sql, const Row& row);

private:
    struct Close {
        void operator()(sqlite3* database) const;
    };

    void harden();
    static int countWork(void* query);

    std::unique_ptr<sqlite3, Close> _database;
    qint64 _workLimit = 0;
    qint64 _work = 0;
};
