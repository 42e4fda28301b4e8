#include "Device/sql/PhotoQuery.h"

#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

#include <algorithm>
#include <limits>

namespace
{
/// Instructions between two calls of the progress handler.
constexpr int WorkStep = 1000;
/// What any statement may do, and what it may do more for each byte of the file. A row of the
/// tables read here takes more than ten bytes and costs some twenty instructions.
constexpr qint64 BaseWork = 1'000'000;
constexpr qint64 WorkPerByte = 8;
constexpr int LongestText = 1024 * 1024;
constexpr int MostColumns = 500;
constexpr int DeepestExpression = 100;
constexpr int MostInstructions = 25'000;

struct Finalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
} // namespace

void PhotoQuery::Close::operator()(sqlite3* database) const
{
    sqlite3_close_v2(database);
}

PhotoQuery::PhotoQuery(const QString& path)
{
    sqlite3* database = nullptr;
    const int result = sqlite3_open_v2(
        QFile::encodeName(path).constData(), &database,
        SQLITE_OPEN_READONLY | SQLITE_OPEN_PRIVATECACHE | SQLITE_OPEN_NOMUTEX, nullptr);
    _database.reset(database);
    if (result != SQLITE_OK) {
        _database.reset();
        return;
    }
    const qint64 bytes = QFileInfo(path).size() + QFileInfo(path + QStringLiteral("-wal")).size();
    _workLimit = BaseWork + WorkPerByte * bytes;
    harden();
}

PhotoQuery::~PhotoQuery() = default;

bool PhotoQuery::isOpen() const
{
    return _database != nullptr;
}

void PhotoQuery::harden()
{
    sqlite3* database = _database.get();
    sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_limit(database, SQLITE_LIMIT_LENGTH, LongestText);
    sqlite3_limit(database, SQLITE_LIMIT_COLUMN, MostColumns);
    sqlite3_limit(database, SQLITE_LIMIT_EXPR_DEPTH, DeepestExpression);
    sqlite3_limit(database, SQLITE_LIMIT_VDBE_OP, MostInstructions);
    sqlite3_limit(database, SQLITE_LIMIT_ATTACHED, 0);
    sqlite3_progress_handler(database, WorkStep, countWork, this);
    // Only this program has the copy, but its side files may say that somebody is at work.
    sqlite3_busy_timeout(database, 0);
}

int PhotoQuery::countWork(void* query)
{
    auto* self = static_cast<PhotoQuery*>(query);
    self->_work += WorkStep;
    return self->_work > self->_workLimit ? 1 : 0;
}

bool PhotoQuery::each(const char* sql, const Row& row)
{
    _work = 0;
    sqlite3_stmt* prepared = nullptr;
    if (sqlite3_prepare_v2(_database.get(), sql, -1, &prepared, nullptr) != SQLITE_OK)
        return false;
    const std::unique_ptr<sqlite3_stmt, Finalize> statement(prepared);
    while (sqlite3_step(statement.get()) == SQLITE_ROW)
        row(statement.get());
    return true;
}
