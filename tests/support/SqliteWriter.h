#pragma once

#include <QByteArray>
#include <QString>
#include <QVariantList>

#include <memory>

struct sqlite3;
struct sqlite3_stmt;

/// Writes a real SQLite file. What goes wrong throws std::runtime_error.
class SqliteWriter
{
public:
    enum Start { New, Existing };

    /// A new file in place of whatever file is there, or one that exists already.
    explicit SqliteWriter(const QString& path, Start start = New);
    ~SqliteWriter();
    SqliteWriter(const SqliteWriter&) = delete;
    SqliteWriter& operator=(const SqliteWriter&) = delete;

    /// Runs statements that have no result.
    void run(const QByteArray& sql);
    /// Turns on write-ahead mode; from now on every row stays in the log.
    void keepRowsInLog();
    /// Writes the file and its side files, as they are now, to another place.
    void copyTo(const QString& path) const;

    /// A statement that is prepared once and run for many rows.
    class Insertion
    {
    public:
        Insertion(const SqliteWriter& file, const QByteArray& table, int columns);
        /// Null is NULL, byte arrays are blobs, strings are texts.
        void add(const QVariantList& values);

    private:
        std::shared_ptr<sqlite3_stmt> _statement;
    };
    [[nodiscard]] Insertion into(const QByteArray& table, int columns) const
    {
        return {*this, table, columns};
    }

private:
    QString _path;
    sqlite3* _database = nullptr;
};
