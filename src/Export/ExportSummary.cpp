#include "Export/ExportSummary.h"

#include "Base/PathName.h"
#include "Export/ExportReport.h"

#include <QHash>

#include <algorithm>

namespace
{
constexpr std::size_t MostGroups = 5;
constexpr qsizetype LongestReason = 200; ///< it may quote a name from the device

/// Whether `path` is the folder, or lies below it.
bool isWithin(const QString& path, const QString& folder)
{
    return path == folder || path.startsWith(folder + u'/');
}
} // namespace

ExportSummary::ExportSummary(const ExportReport& report)
{
    QHash<QString, int> reasons;
    for (const ExportItem& item : report.items()) {
        count(item);
        if (!item.isHandOver() && item.isNotCopied())
            ++reasons[item.why];
    }
    for (auto reason = reasons.cbegin(); reason != reasons.cend(); ++reason)
        _groups.push_back({reason.key(), reason.value()});
    std::sort(_groups.begin(), _groups.end(), [](const Group& one, const Group& other) {
        return one.count != other.count ? one.count > other.count : one.why < other.why;
    });
}

void ExportSummary::count(const ExportItem& item)
{
    if (item.isHandOver()) {
        ++_notHandedOver;
        return;
    }
    switch (item.result) {
    case ExportItem::Result::Copied:
        ++_copied;
        lieIn(PathName::parent(item.to));
        break;
    case ExportItem::Result::Skipped:
        ++_skipped;
        break;
    case ExportItem::Result::Missing:
    case ExportItem::Result::Incomplete:
    case ExportItem::Result::Failed:
    case ExportItem::Result::Stopped:
        ++_notCopied;
        break;
    case ExportItem::Result::Planned: // of no export that ran
        break;
    }
}

void ExportSummary::lieIn(const QString& folder)
{
    if (_lieApart)
        return;
    if (_folder.isNull())
        _folder = folder;
    while (!isWithin(folder, _folder)) {
        _folder = PathName::parent(_folder);
        if (_folder.size() <= 1) {
            _lieApart = true;
            _folder = QString();
            return;
        }
    }
}

QStringList ExportSummary::lines() const
{
    QStringList lines;
    if (_copied > 0)
        lines.append(tr("%n item(s) were copied.", nullptr, _copied));
    if (!_folder.isNull())
        lines.append(tr("They are in %1.").arg(_folder));
    if (_skipped > 0)
        lines.append(tr("%n item(s) were skipped: there were files of their names already.",
                        nullptr, _skipped));
    if (_notCopied > 0)
        lines.append(tr("%n item(s) were not copied:", nullptr, _notCopied));
    for (std::size_t i = 0; i < _groups.size() && i < MostGroups; ++i)
        lines.append(QStringLiteral("• ") +
                     tr("%1: %2").arg(_groups[i].count).arg(_groups[i].why.left(LongestReason)));
    if (_groups.size() > MostGroups)
        lines.append(QStringLiteral("• ") +
                     tr("and %n other reason(s)", nullptr, int(_groups.size() - MostGroups)));
    if (_notHandedOver > 0)
        lines.append(
            tr("%n time(s) the music application did not take a file.", nullptr, _notHandedOver));
    return lines;
}
