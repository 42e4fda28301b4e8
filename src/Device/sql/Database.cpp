#include "Device/sql/Database.h"

#include "Device/TemporaryCopy.h"

#include <QFile>

#include <algorithm>
#include <array>

namespace
{
using namespace std::chrono_literals;

/// Far beyond what reading any real library takes.
constexpr auto MostTime = 30s;
constexpr int InstructionsBetweenChecks = 4096;
/// What the smallest file may cost, and how much a file may cost besides for its size: reading
/// a library takes about one instruction a byte.
constexpr qint64 LeastChecks = 10'000;
constexpr qint64 BytesPerCheck = 256;

constexpr int KiB = 1024;
constexpr int MiB = KiB * KiB;
constexpr int ShortestLengthLimit = 64 * KiB;
constexpr int LongestLengthLimit = 64 * MiB;
constexpr int MostSqlBytes = 256 * KiB; // schemas of devices have some hundred KiB at most
constexpr int MostExpressionDepth = 500;
/// Columns that are made from others double a statement with each step; ours have some hundreds.
constexpr int MostInstructions = 25'000;

/// A row takes more bytes than this in any table.
constexpr qint64 LeastBytesPerRow = 4;
/// Joined texts come again and again, but not as often as this.
constexpr qint64 MostRepetition = 64;

/// What statements and what a schema adds to them may do: read, and nothing that recurses.
int authorize(void* /*context*/, int action, const char* /*third*/, const char* /*fourth*/,
              const char* /*database*/, const char* /*view*/)
{
    return action == SQLITE_SELECT || action == SQLITE_READ || action == SQLITE_FUNCTION
               ? SQLITE_OK
               : SQLITE_DENY;
}

void refuse(sqlite3_context* context, int /*count*/, sqlite3_value** /*values*/)
{
    sqlite3_result_error(context, "not here", -1);
}

/// Functions that take time by the product of two lengths within one instruction, where nothing
/// can end them. They may still be named: an index that needs one must not spoil its table.
void refuseSlowFunctions(sqlite3* database)
{
    struct Function {
        const char* name;
        int arguments;
    };
    constexpr std::array Slow = {
        Function{"instr", 2}, Function{"replace", 3}, Function{"trim", 2},
        Function{"ltrim", 2}, Function{"rtrim", 2},   Function{"like", 2},
        Function{"like", 3},  Function{"glob", 2},    Function{"json_patch", 2}};
    constexpr int Harmless = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
    for (const Function& function : Slow)
        sqlite3_create_function(database, function.name, function.arguments, Harmless, nullptr,
                                refuse, nullptr, nullptr);
}
} // namespace

Statement::Statement(sqlite3* database, const char* sql, StatementLimits limits)
    : _limits(limits)
{
    sqlite3_stmt* statement = nullptr;
    if (database && sqlite3_prepare_v2(database, sql, -1, &statement, nullptr) == SQLITE_OK)
        _statement.reset(statement);
}

bool Statement::step()
{
    if (!_statement || _limits.rows <= 0 || _limits.bytes <= 0)
        return false;
    --_limits.rows;
    return sqlite3_step(_statement.get()) == SQLITE_ROW;
}

int Statement::number(int column) const
{
    return sqlite3_column_int(_statement.get(), column);
}

qint32 Statement::id(int column) const
{
    return qint32(quint32(quint64(sqlite3_column_int64(_statement.get(), column))));
}

double Statement::real(int column) const
{
    return sqlite3_column_double(_statement.get(), column);
}

QByteArrayView Statement::utf8(int column)
{
    // The text first: asking for it may convert the column and so change its length.
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(_statement.get(), column));
    const int length = sqlite3_column_bytes(_statement.get(), column);
    if (!text)
        return {};
    spend(length);
    return {text, length};
}

QString Statement::text(int column)
{
    spend(sqlite3_column_bytes(_statement.get(), column));
    return Utility::stringWithStmt(_statement.get(), column);
}

QDateTime Statement::date(int column) const
{
    return Utility::dateWithStmt(_statement.get(), column);
}

ByteView Statement::blob(int column)
{
    const void* bytes = sqlite3_column_blob(_statement.get(), column);
    const int length = sqlite3_column_bytes(_statement.get(), column);
    if (!bytes || length <= 0)
        return {};
    spend(length);
    return {static_cast<const std::byte*>(bytes), std::size_t(length)};
}

Database::Database(const TemporaryCopy& copy)
    : _budget(std::make_unique<Budget>())
{
    _budget->deadline = std::chrono::steady_clock::now() + MostTime;
    sqlite3* database = nullptr;
    // One thread has the connection, and only a copy that is there is opened.
    constexpr int Flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_PRIVATECACHE;
    const QByteArray path = copy.path().isEmpty() ? QByteArray() : QFile::encodeName(copy.path());
    const bool opened = !path.isEmpty() &&
                        sqlite3_open_v2(path.constData(), &database, Flags, nullptr) == SQLITE_OK;
    _database.reset(database); // there is one to close even after a failure
    if (!opened) {
        _database.reset();
        return;
    }
    harden(copy.size());
}

Statement Database::prepare(const char* sql) const
{
    return {_database.get(), sql, _limits};
}

bool Database::Budget::spend()
{
    return --checks >= 0 && std::chrono::steady_clock::now() <= deadline;
}

void Database::harden(qint64 size)
{
    sqlite3* database = _database.get();
    _limits = {std::max<qint64>(size / LeastBytesPerRow, 1), size * MostRepetition};
    sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    // A dozen views of one another take minutes to prepare, and nothing can end that.
    sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    const qint64 length = std::clamp<qint64>(size, ShortestLengthLimit, LongestLengthLimit);
    sqlite3_limit(database, SQLITE_LIMIT_LENGTH, int(length));
    sqlite3_limit(database, SQLITE_LIMIT_SQL_LENGTH, MostSqlBytes);
    sqlite3_limit(database, SQLITE_LIMIT_EXPR_DEPTH, MostExpressionDepth);
    sqlite3_limit(database, SQLITE_LIMIT_VDBE_OP, MostInstructions);
    sqlite3_limit(database, SQLITE_LIMIT_ATTACHED, 0);
    sqlite3_limit(database, SQLITE_LIMIT_WORKER_THREADS, 0);
    sqlite3_set_authorizer(database, authorize, nullptr);
    refuseSlowFunctions(database);
    _budget->checks = LeastChecks + size / BytesPerCheck;
    sqlite3_progress_handler(
        database, InstructionsBetweenChecks,
        [](void* budget) { return int(!static_cast<Budget*>(budget)->spend()); }, _budget.get());
}
