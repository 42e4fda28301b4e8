#include "Device/sql/Database.h"

#include "Device/TemporaryCopy.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <algorithm>

namespace
{
/// What a database begins with; its numbers are big-endian.
constexpr qint64 HeaderBytes = 100;
namespace Header
{
constexpr int PageSize = 16;
constexpr int ChangeCounter = 24;
constexpr int PageCount = 28;
constexpr int PageCountCounter = 92;
} // namespace Header
constexpr qint64 LargestPage = 65536;
/// No library comes near it.
constexpr qint64 MostBytes = qint64(4) * 1024 * 1024 * 1024;

/// The bytes that a database says it has, where it says so; else 0.
qint64 claimedBytes(const QByteArray& header)
{
    const auto number = [&](int place) { return qFromBigEndian<quint32>(header.data() + place); };
    if (!header.startsWith("SQLite format 3") ||
        number(Header::ChangeCounter) != number(Header::PageCountCounter))
        return 0;
    const auto size = qFromBigEndian<quint16>(header.data() + Header::PageSize);
    return (size == 1 ? LargestPage : qint64(size)) * number(Header::PageCount);
}

/// Gives a database whose end is missing its length back: SQLite opens none that is shorter than
/// it says. Pages of zeros are damaged ones, and all others can be read.
void mendLength(QFile& file, const LibraryProblems& problems)
{
    const QByteArray header = file.read(HeaderBytes);
    if (header.size() < HeaderBytes)
        return;
    const qint64 claimed = claimedBytes(header);
    if (claimed <= file.size())
        return;
    problems.isDamaged(QStringLiteral("%1 B / %2 B").arg(file.size()).arg(claimed));
    file.resize(std::min(claimed, MostBytes));
}

/// Whether there is something to read after all.
bool examine(const TemporaryCopy& copy, const LibraryProblems& problems)
{
    if (!copy.status().operator bool() && copy.status().failedAs(Failure::Kind::Refused)) {
        problems.isCutOff(copy.status().failure().exact);
        return false;
    }
    if (!copy.status())
        problems.cannotBeRead(copy.status().failure());
    if (!copy.logStatus())
        problems.lacksNewestChanges(copy.logStatus().failure());
    QFile file(copy.path());
    if (copy.path().isEmpty() || !file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly))
        return false;
    if (file.size() == 0 && copy.status())
        problems.isEmpty();
    // With a log beside it, that is where the missing pages may be.
    else if (QFileInfo(copy.path() + QStringLiteral("-wal")).size() <= 0)
        mendLength(file, problems);
    return file.size() > 0;
}
} // namespace

Database::Database(const TemporaryCopy& copy, const LibraryProblems& problems)
    : _problems(problems)
{
    const qint64 size = copy.size(); // before its length is mended
    if (!examine(copy, _problems))
        return;
    _connection = std::make_unique<Connection>(copy.path(), size);
    if (!_connection->isOpen())
        _problems.cannotBeRead({Failure::Kind::Unreadable, _connection->errorText(), {}});
}

Statement Database::prepare(const Query& query) const
{
    return {_connection.get(), _problems, query};
}

std::optional<bool> Database::hasTable(const char* name) const
{
    if (!_connection || !_connection->isOpen())
        return std::nullopt;
    const Connection::Prepared row =
        _connection->prepare("select count(*) from sqlite_master where type='table' and name='" +
                             QByteArray(name) + "'");
    if (!row || _connection->step(row.get()) != SQLITE_ROW)
        return std::nullopt;
    return sqlite3_column_int(row.get(), 0) > 0;
}
