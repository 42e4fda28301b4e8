#include "Device/sql/Statement.h"

#include "Base/Failure.h"

namespace
{
/// Before the columns that are asked for, each row gives its id.
constexpr int RowId = 0;
constexpr int FirstColumn = 1;

/// After so many rows of which only the names are lost, nobody asks for names any more.
constexpr int Patience = 1000;

/// Whether another row may still be read after this failure.
bool isOfOnePlace(int result)
{
    return result == SQLITE_CORRUPT || result == SQLITE_TOOBIG || result == SQLITE_IOERR ||
           result == SQLITE_FORMAT;
}

/// `id` with `steps` added, which must not lead beyond the last one.
qint64 further(qint64 id, quint64 steps)
{
    return qint64(quint64(id) + steps);
}

quint64 distance(qint64 from, qint64 to)
{
    return quint64(to) - quint64(from);
}
} // namespace

Statement::Statement(Connection* connection, const LibraryProblems& problems, const Query& query)
    : _connection(connection)
    , _problems(problems)
    , _query(query)
{
    if (!connection || !connection->isOpen())
        return; // whoever opened it has said so
    _limits = connection->limits();
    _natural = connection->prepare(sql(query.table, false, ""));
    if (!_natural && connection->error() == SQLITE_ERROR) { // a table may do without row ids
        _natural = connection->prepare(sql(nullptr, false, ""));
        _hasRowIds = false;
    }
    _current = _natural.get();
    if (!_current)
        explain(connection->error());
}

QByteArray Statement::sql(const char* rowId, bool bare, const char* order) const
{
    const QByteArray id = rowId ? QByteArray(rowId) + ".rowid" : QByteArray("0");
    QByteArray sql = "select " + id + ", " + (bare ? _query.bareColumns : _query.columns) +
                     " from " + _query.table + " " + (bare ? _query.bareJoins : _query.joins);
    const QByteArray where = _query.where;
    const QByteArray from = *order ? id + " >= ?1" : QByteArray();
    if (!where.isEmpty() || !from.isEmpty())
        sql += " where " + where + (where.isEmpty() || from.isEmpty() ? "" : " and ") + from;
    return sql + order;
}

bool Statement::step()
{
    while (_current && spendRow()) {
        int result = next();
        if (isOfOnePlace(result))
            result = goOn(result);
        if (result == SQLITE_ROW && isNewRow()) {
            ++_given;
            return true;
        }
        if (result == SQLITE_ROW)
            continue;
        if (result != SQLITE_DONE)
            explain(result);
        return end();
    }
    return false;
}

bool Statement::spendRow()
{
    if (_limits.rows-- > 0 && _limits.bytes > 0)
        return true;
    _problems.isCutOff(QString::fromUtf8(_query.table));
    return end();
}

int Statement::next()
{
    if (_current != _bare.get())
        return _connection->step(_current);
    // The bare row was the only one that was asked for.
    _current = _search.get();
    return _from ? seek(_search, *_from) : SQLITE_DONE;
}

/// Keeps the place of the row. False for one that was given before.
bool Statement::isNewRow()
{
    if (!_hasRowIds)
        return true;
    const qint64 id = sqlite3_column_int64(_current, RowId);
    _ascends = _ascends && _from && id >= *_from;
    _from = id == LastRowId ? std::nullopt : std::optional(id + 1);
    return !_seen.contains(id);
}

/// A row that can be read behind the one that cannot.
int Statement::goOn(int failure)
{
    remember(failure);
    if (!canSearch())
        return SQLITE_DONE;
    if (_current == _natural.get() && !_ascends) {
        if (!startOver())
            return SQLITE_DONE;
        const int result = seek(_search, *_from);
        return isOfOnePlace(result) ? goOn(result) : result;
    }
    if (!_from)
        return SQLITE_DONE;
    if (_bare && _places > Patience)
        _search = std::move(_bare);
    // Perhaps the row is there, and only a name that it refers to is lost.
    if (_bare && seek(_bare, *_from) == SQLITE_ROW) {
        _current = _bare.get();
        return SQLITE_ROW;
    }
    _current = _search.get();
    return seekBehind(*_from);
}

bool Statement::canSearch()
{
    if (!_hasRowIds)
        return false;
    if (_search)
        return true;
    const QByteArray order = QByteArray(" order by ") + _query.table + ".rowid";
    _search = _connection->prepare(sql(_query.table, false, order.constData()));
    if (_query.bareColumns)
        _bare = _connection->prepare(sql(_query.table, true, order.constData()));
    return bool(_search);
}

/// Rows that came by the order of some index leave holes everywhere. What was given is found out
/// by asking for it once more.
bool Statement::startOver()
{
    sqlite3_reset(_natural.get());
    for (qint64 i = 0; i < _given; ++i) {
        if (_connection->step(_natural.get()) != SQLITE_ROW)
            return false;
        _seen.insert(sqlite3_column_int64(_natural.get(), RowId));
    }
    _current = _search.get();
    _from = FirstRowId;
    _ascends = true;
    return true;
}

int Statement::seek(const Connection::Prepared& statement, qint64 from)
{
    sqlite3_reset(statement.get());
    sqlite3_bind_int64(statement.get(), 1, from);
    return _connection->step(statement.get());
}

/// Steps that widen lead out of what is damaged. Most tables begin at 0, so the steps begin anew
/// there.
int Statement::seekBehind(qint64 damaged)
{
    const qint64 end = damaged < 0 ? 0 : LastRowId;
    quint64 width = 1;
    for (qint64 place = damaged; place != end; width *= 2) {
        if (!_connection->spend())
            return SQLITE_INTERRUPT;
        const qint64 before = place;
        place = distance(place, end) <= width ? end : further(place, width);
        const int result = seek(_search, place);
        if (!isOfOnePlace(result))
            return result == SQLITE_ROW || result == SQLITE_DONE
                       ? seek(_search, nearestReadable(before, place))
                       : result;
    }
    return end == 0 ? seekBehind(0) : SQLITE_DONE;
}

qint64 Statement::nearestReadable(qint64 damaged, qint64 readable)
{
    while (distance(damaged, readable) > 1) {
        const qint64 middle = further(damaged, distance(damaged, readable) / 2);
        (isOfOnePlace(seek(_search, middle)) ? damaged : readable) = middle;
    }
    return readable;
}

void Statement::remember(int failure)
{
    ++(failure == SQLITE_TOOBIG ? _tooLarge : _places);
    _exact = _connection->errorText();
}

/// Says why there are no rows, or no more.
void Statement::explain(int failure) const
{
    const QString exact = _connection->errorText();
    switch (failure) {
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_FORMAT:
        return _problems.isDamaged(exact);
    case SQLITE_INTERRUPT:
    case SQLITE_TOOBIG:
    case SQLITE_NOMEM:
        return _problems.isCutOff(exact);
    case SQLITE_ERROR:
    case SQLITE_AUTH:
        return _problems.isNotUnderstood(exact);
    default:
        return _problems.cannotBeRead({Failure::Kind::Unreadable, exact, {}});
    }
}

void Statement::sayWhatIsMissing()
{
    const QString table = QString::fromUtf8(_query.table);
    if (_tooLarge > 0)
        _problems.isCutOff(QStringLiteral("%1: %2").arg(table, _exact));
    if (_places == 0)
        return;
    const QString exact = QStringLiteral("%1: %2, %3x").arg(table, _exact).arg(_places);
    // The count may come from an index that is whole.
    const Connection::Prepared count =
        _query.isMain ? _connection->prepare("select count(*) from " + QByteArray(_query.table))
                      : nullptr;
    if (count && _connection->step(count.get()) == SQLITE_ROW &&
        sqlite3_column_int64(count.get(), 0) > _given)
        _problems.isDamaged(_given, sqlite3_column_int64(count.get(), 0), exact);
    else
        _problems.isDamaged(exact);
}

bool Statement::end()
{
    _current = nullptr;
    sayWhatIsMissing();
    return false;
}

int Statement::number(int column) const
{
    return sqlite3_column_int(_current, FirstColumn + column);
}

qint32 Statement::id(int column) const
{
    return qint32(quint32(quint64(sqlite3_column_int64(_current, FirstColumn + column))));
}

double Statement::real(int column) const
{
    return sqlite3_column_double(_current, FirstColumn + column);
}

QByteArrayView Statement::utf8(int column)
{
    // The text first: asking for it may convert the column and so change its length.
    const auto* text =
        reinterpret_cast<const char*>(sqlite3_column_text(_current, FirstColumn + column));
    const int length = sqlite3_column_bytes(_current, FirstColumn + column);
    if (!text)
        return {};
    spend(length);
    return {text, length};
}

QString Statement::text(int column)
{
    spend(sqlite3_column_bytes(_current, FirstColumn + column));
    return Utility::stringWithStmt(_current, FirstColumn + column);
}

QDateTime Statement::date(int column) const
{
    return Utility::dateWithStmt(_current, FirstColumn + column);
}

ByteView Statement::blob(int column)
{
    const void* bytes = sqlite3_column_blob(_current, FirstColumn + column);
    const int length = sqlite3_column_bytes(_current, FirstColumn + column);
    if (!bytes || length <= 0)
        return {};
    spend(length);
    return {static_cast<const std::byte*>(bytes), std::size_t(length)};
}
