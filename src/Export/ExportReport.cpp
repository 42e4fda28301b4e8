#include "Export/ExportReport.h"

#include "Base/PathName.h"
#include "Base/Utility.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

namespace
{
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

ExportReport::ExportReport()
    : _log(PathName::join(Utility::logFolder(), u"export.log"))
{
}

void ExportReport::add(ExportItem item)
{
    // Not before the first item: an export that is given up at once leaves the last log alone.
    // Without a log the job still runs; its host has the items.
    if (_items.empty())
        (void)_log.open(QIODevice::WriteOnly | QIODevice::Truncate);
    if (_log.isOpen()) {
        _log.write(item.toJson() + '\n');
        _log.flush();
    }
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
    return file.commit() ? QString() : file.errorString();
}
