#include "Export/ExportReport.h"

#include "Base/PathName.h"
#include "Base/Utility.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace
{
Failure notWritten(const QString& exact)
{
    return {Failure::Kind::Unwritable, ExportReport::tr("The report could not be written"), exact};
}

QJsonValue textOrNull(const QString& text)
{
    return text.isNull() ? QJsonValue(QJsonValue::Null) : QJsonValue(text);
}

QString kindName(ExportItem::Kind kind)
{
    switch (kind) {
    case ExportItem::Kind::Track:
        return QStringLiteral("track");
    case ExportItem::Kind::Photo:
        return QStringLiteral("photo");
    case ExportItem::Kind::HandOver:
        return QStringLiteral("hand-over");
    }
    return {};
}
} // namespace

bool ExportItem::isFailure() const
{
    return result == Result::Missing || result == Result::Incomplete || result == Result::Failed;
}

QString ExportItem::resultName(Result result)
{
    switch (result) {
    case Result::Copied:
        return QStringLiteral("copied");
    case Result::Skipped:
        return QStringLiteral("skipped");
    case Result::Missing:
        return QStringLiteral("missing");
    case Result::Incomplete:
        return QStringLiteral("incomplete");
    case Result::Failed:
        return QStringLiteral("failed");
    case Result::Stopped:
        return QStringLiteral("stopped");
    case Result::Planned:
        return QStringLiteral("planned");
    }
    return {};
}

QByteArray ExportItem::toJson() const
{
    const QJsonObject object = {
        {QStringLiteral("kind"), kindName(kind)},   {QStringLiteral("title"), textOrNull(title)},
        {QStringLiteral("from"), textOrNull(from)}, {QStringLiteral("to"), textOrNull(to)},
        {QStringLiteral("bytes"), bytes},           {QStringLiteral("result"), resultName(result)},
        {QStringLiteral("why"), textOrNull(why)}};
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

Status ReportFile::open(const QString& path)
{
    _isEmptied = false;
    // Not truncated yet: an export that never begins leaves the last report alone.
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
    if (descriptor < 0)
        return notWritten(qt_error_string());
    if (!_file.open(descriptor, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle))
        return notWritten(_file.errorString());
    return {};
}

void ReportFile::write(const QByteArray& line)
{
    if (!_file.isOpen())
        return;
    if (!_isEmptied && !_file.isSequential())
        (void)_file.resize(0);
    _isEmptied = true;
    _file.write(line);
    // What finds no room stays with the file, which tries again with the next line.
    (void)_file.flush();
}

Status ReportFile::close()
{
    if (!_file.isOpen())
        return {};
    write({}); // an export of nothing has an empty report
    const Status status = flush();
    _file.close();
    return status;
}

Status ReportFile::flush()
{
    if (!_file.flush())
        return notWritten(_file.errorString());
    // Some file systems say only now that there is no room. Pipes know no such thing.
    if (fsync(_file.handle()) != 0 && errno != EINVAL && errno != EROFS && errno != ENOTSUP)
        return notWritten(qt_error_string());
    return {};
}

ExportReport::ExportReport()
    : _log(PathName::join(Utility::logFolder(), u"export.log"))
{
}

Status ExportReport::follow(const QString& path)
{
    return _followed.open(path);
}

Status ExportReport::endFollowing()
{
    return _followed.close();
}

void ExportReport::add(ExportItem item)
{
    const QByteArray line = item.toJson() + '\n';
    // Not before the first item: an export that is given up at once leaves the last log alone.
    // Without a log the job still runs; its host has the items.
    if (_items.empty())
        (void)_log.open(QIODevice::WriteOnly | QIODevice::Truncate);
    if (_log.isOpen()) {
        _log.write(line);
        _log.flush();
    }
    _followed.write(line);
    if (item.isHandOver()) {
        ++_handOverCount;
    } else {
        _failureCount += item.isFailure() ? 1 : 0;
        _notCopiedCount += item.isNotCopied() ? 1 : 0;
    }
    _items.push_back(std::move(item));
}

QString ExportReport::writeTo(const QString& path) const
{
    QSaveFile file(path);
    // A report may go to a pipe or to a device such as /dev/stdout, which nothing can replace.
    file.setDirectWriteFallback(true);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    for (const ExportItem& item : _items)
        file.write(item.toJson() + '\n');
    // A commit of its own accord forgets that the last of it found no room.
    if (!file.flush()) {
        const QString problem = file.errorString();
        file.cancelWriting();
        return problem;
    }
    return file.commit() ? QString() : file.errorString();
}
