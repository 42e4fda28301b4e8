#include "support/SqliteWriter.h"

#include "Base/PathName.h"
#include "Base/Utility.h"

#include <QFile>

#include <sqlite3.h>

#include <stdexcept>

namespace
{
void check(int result, sqlite3* database, const QByteArray& what)
{
    if (result != SQLITE_OK && result != SQLITE_DONE)
        throw std::runtime_error(what.toStdString() + ": " + sqlite3_errmsg(database));
}

int bind(sqlite3_stmt* statement, int place, const QVariant& value)
{
    if (value.isNull())
        return sqlite3_bind_null(statement, place);
    switch (value.typeId()) {
    case QMetaType::QByteArray: {
        const QByteArray bytes = value.toByteArray();
        return sqlite3_bind_blob(statement, place, bytes.constData(), int(bytes.size()),
                                 SQLITE_TRANSIENT);
    }
    case QMetaType::QString: {
        const QByteArray text = value.toString().toUtf8();
        return sqlite3_bind_text(statement, place, text.constData(), int(text.size()),
                                 SQLITE_TRANSIENT);
    }
    case QMetaType::Double:
        return sqlite3_bind_double(statement, place, value.toDouble());
    default:
        return sqlite3_bind_int64(statement, place, value.toLongLong());
    }
}
} // namespace

SqliteWriter::SqliteWriter(const QString& path, Start start)
    : _path(path)
{
    Utility::createFolder(PathName::parent(path));
    if (start == New)
        QFile::remove(path);
    check(sqlite3_open(QFile::encodeName(path).constData(), &_database), _database, path.toUtf8());
    run("pragma synchronous = off");
}

SqliteWriter::~SqliteWriter()
{
    sqlite3_close(_database);
}

void SqliteWriter::run(const QByteArray& sql)
{
    check(sqlite3_exec(_database, sql.constData(), nullptr, nullptr, nullptr), _database, sql);
}

void SqliteWriter::keepRowsInLog()
{
    run("pragma journal_mode = wal; pragma wal_checkpoint(truncate);"
        "pragma wal_autocheckpoint = 0");
}

void SqliteWriter::copyTo(const QString& path) const
{
    Utility::createFolder(PathName::parent(path));
    for (const char* suffix : {"", "-shm", "-wal"}) {
        const QString from = _path + QString::fromLatin1(suffix);
        const QString to = path + QString::fromLatin1(suffix);
        QFile::remove(to);
        if (QFile::exists(from) && !QFile::copy(from, to))
            throw std::runtime_error("cannot copy " + from.toStdString());
    }
}

SqliteWriter::Insertion::Insertion(const SqliteWriter& file, const QByteArray& table, int columns)
{
    QByteArray places = "?";
    for (int i = 1; i < columns; ++i)
        places += ",?";
    const QByteArray sql = "insert into " + table + " values (" + places + ")";
    sqlite3_stmt* statement = nullptr;
    check(sqlite3_prepare_v2(file._database, sql.constData(), -1, &statement, nullptr),
          file._database, sql);
    _statement.reset(statement, sqlite3_finalize);
}

void SqliteWriter::Insertion::add(const QVariantList& values)
{
    sqlite3_stmt* statement = _statement.get();
    sqlite3* database = sqlite3_db_handle(statement);
    for (qsizetype i = 0; i < values.size(); ++i)
        check(bind(statement, int(i) + 1, values[i]), database, "bind");
    check(sqlite3_step(statement), database, sqlite3_sql(statement));
    sqlite3_reset(statement);
}
