#include "Device/sql/Connection.h"

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

/// SQLite's code without its details.
int plain(int result)
{
    constexpr int Details = 8;
    return result & ((1 << Details) - 1);
}
} // namespace

Connection::Connection(const QString& file, qint64 size)
    : _budget(std::make_unique<Budget>())
{
    _budget->deadline = std::chrono::steady_clock::now() + MostTime;
    sqlite3* database = nullptr;
    // One thread has the connection, and only a copy that is there is opened.
    constexpr int Flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_PRIVATECACHE;
    const int result =
        sqlite3_open_v2(QFile::encodeName(file).constData(), &database, Flags, nullptr);
    _database.reset(database); // there is one to close even after a failure
    if (note(result) != SQLITE_OK)
        _database.reset();
    else
        harden(size);
}

Connection::Prepared Connection::prepare(const QByteArray& sql)
{
    sqlite3_stmt* statement = nullptr;
    _read.clear();
    if (note(sqlite3_prepare_v2(_database.get(), sql.constData(), -1, &statement, nullptr)) !=
        SQLITE_OK)
        return nullptr;
    Prepared prepared(statement);
    return areStored(_read) ? std::move(prepared) : nullptr;
}

int Connection::step(sqlite3_stmt* statement)
{
    const int result = sqlite3_step(statement);
    return result == SQLITE_ROW || result == SQLITE_DONE ? result : note(result);
}

int Connection::note(int result)
{
    if (result != SQLITE_OK) {
        _error = plain(result);
        _errorText =
            QString::fromUtf8(_database ? sqlite3_errmsg(_database.get()) : sqlite3_errstr(result));
    }
    return plain(result);
}

/// Columns that are made from others when they are read may double each other without end, and
/// no device has any.
bool Connection::areStored(const Columns& columns)
{
    std::set<std::string> tables;
    for (const auto& [table, column] : columns)
        tables.insert(table);
    for (const std::string& table : tables) {
        const std::unique_ptr<char, decltype(&sqlite3_free)> sql(
            sqlite3_mprintf("pragma table_xinfo(%Q)", table.c_str()), sqlite3_free);
        sqlite3_stmt* statement = nullptr;
        _asksForSchema = true;
        const int result =
            note(sqlite3_prepare_v2(_database.get(), sql.get(), -1, &statement, nullptr));
        _asksForSchema = false;
        const Prepared rows(statement);
        if (result != SQLITE_OK)
            return false;
        constexpr int Name = 1;
        constexpr int Hidden = 6;
        constexpr int FirstGenerated = 2;
        while (step(rows.get()) == SQLITE_ROW) {
            const auto* name = reinterpret_cast<const char*>(sqlite3_column_text(rows.get(), Name));
            if (sqlite3_column_int(rows.get(), Hidden) >= FirstGenerated && name &&
                columns.contains({table, name})) {
                _error = SQLITE_ERROR;
                _errorText = QStringLiteral("generated column: %1.%2")
                                 .arg(QString::fromStdString(table), QString::fromUtf8(name));
                return false;
            }
        }
    }
    return true;
}

bool Connection::Budget::spend()
{
    return --checks >= 0 && std::chrono::steady_clock::now() <= deadline;
}

/// What statements and what a schema adds to them may do: read, and nothing that recurses.
int Connection::authorize(void* self, int action, const char* third, const char* fourth,
                          const char* /*database*/, const char* /*view*/)
{
    auto& connection = *static_cast<Connection*>(self);
    if (connection._asksForSchema)
        return action == SQLITE_PRAGMA ? SQLITE_OK : SQLITE_DENY;
    if (action == SQLITE_READ && third && fourth)
        connection._read.emplace(third, fourth);
    return action == SQLITE_SELECT || action == SQLITE_READ || action == SQLITE_FUNCTION
               ? SQLITE_OK
               : SQLITE_DENY;
}

void Connection::harden(qint64 size)
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
    // Without their modules, virtual tables cannot be read for tables.
    sqlite3_drop_modules(database, nullptr);
    sqlite3_limit(database, SQLITE_LIMIT_LENGTH, int(length));
    sqlite3_limit(database, SQLITE_LIMIT_SQL_LENGTH, MostSqlBytes);
    sqlite3_limit(database, SQLITE_LIMIT_EXPR_DEPTH, MostExpressionDepth);
    sqlite3_limit(database, SQLITE_LIMIT_VDBE_OP, MostInstructions);
    sqlite3_limit(database, SQLITE_LIMIT_ATTACHED, 0);
    sqlite3_limit(database, SQLITE_LIMIT_WORKER_THREADS, 0);
    sqlite3_set_authorizer(database, authorize, this);
    refuseSlowFunctions(database);
    _budget->checks = LeastChecks + size / BytesPerCheck;
    sqlite3_progress_handler(
        database, InstructionsBetweenChecks,
        [](void* budget) { return int(!static_cast<Budget*>(budget)->spend()); }, _budget.get());
}
