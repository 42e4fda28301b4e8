#pragma once

#include "Base/Utility.h"
#include "Device/LibraryProblems.h"
#include "Device/sql/Connection.h"

#include <QSet>
#include <QString>

#include <limits>
#include <optional>

/// What is asked of a database.
struct Query {
    const char* columns;
    const char* table; ///< whose rows are given, one after another
    /// What else is looked up for each row.
    const char* joins = "";
    const char* where = "";
    /// The same columns, with NULL for all that a row can do without, and what they need: for a
    /// row of which only that is damaged.
    const char* bareColumns = nullptr;
    const char* bareJoins = "";
    /// The rows are what a library is there for, and people are told how many are missing.
    bool isMain = false;
};

/// The rows of a query. Where the file is damaged it goes on with the next row that can be read;
/// what it stepped over, and whatever else kept it from rows, is among the problems when the
/// last row has been given.
class Statement
{
public:
    /// Not for longer than the connection.
    Statement(Connection* connection, const LibraryProblems& problems, const Query& query);

    /// Goes on to the next row; false at the end.
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
    static constexpr qint64 FirstRowId = std::numeric_limits<qint64>::min();
    static constexpr qint64 LastRowId = std::numeric_limits<qint64>::max();

    [[nodiscard]] QByteArray sql(const char* rowId, bool bare, const char* order) const;
    bool spendRow();
    void spend(qint64 bytes) { _limits.bytes -= bytes; }
    [[nodiscard]] int next();
    [[nodiscard]] bool isNewRow();
    [[nodiscard]] int goOn(int failure);
    [[nodiscard]] bool canSearch();
    [[nodiscard]] bool startOver();
    [[nodiscard]] int seek(const Connection::Prepared& statement, qint64 from);
    [[nodiscard]] int seekBehind(qint64 damaged);
    [[nodiscard]] qint64 nearestReadable(qint64 damaged, qint64 readable);
    void remember(int failure);
    void explain(int failure) const;
    void sayWhatIsMissing();
    bool end();

    Connection* _connection;
    LibraryProblems _problems;
    Query _query;
    Connection::Limits _limits;
    Connection::Prepared _natural; ///< the rows in the order in which SQLite finds them
    Connection::Prepared _search;  ///< in the order of their ids, from one on
    Connection::Prepared _bare;    ///< the same, without what may be missing
    sqlite3_stmt* _current = nullptr;
    bool _hasRowIds = true;
    bool _ascends = true;
    /// The lowest id of those rows that were not given yet; none behind the highest.
    std::optional<qint64> _from = FirstRowId;
    qint64 _given = 0;
    QSet<qint64> _seen; ///< rows that were given before a search began at the first one
    int _places = 0;    ///< that were stepped over
    int _tooLarge = 0;  ///< rows that were stepped over for their size
    QString _exact;
};
