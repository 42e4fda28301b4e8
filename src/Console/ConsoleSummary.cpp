#include "Console/ConsoleSummary.h"

#include <QHash>

#include <algorithm>
#include <utility>

namespace
{
/// Reasons beyond these are as good as one for each item, and every item has its own line.
constexpr std::size_t MostReasons = 8;
} // namespace

ConsoleSummary::ConsoleSummary(const std::vector<ExportItem>& items)
    : _items(items)
{
}

QString ConsoleSummary::counts() const
{
    using Result = ExportItem::Result;
    const auto count = [this](Result result) {
        return std::count_if(_items.begin(), _items.end(),
                             [&](const ExportItem& item) { return item.result == result; });
    };
    const auto planned = count(Result::Planned);
    QString line = planned > 0 ? tr("%1 would be copied").arg(planned)
                               : tr("%1 copied").arg(count(Result::Copied));
    for (const Result result :
         {Result::Skipped, Result::Missing, Result::Incomplete, Result::Failed, Result::Stopped}) {
        if (count(result) > 0)
            line +=
                QStringLiteral(", %1 %2").arg(count(result)).arg(ExportItem::resultName(result));
    }
    return line;
}

QStringList ConsoleSummary::reasons() const
{
    QHash<QString, int> counts;
    for (const ExportItem& item : _items) {
        if (item.isNotCopied())
            ++counts[item.why];
    }
    std::vector<std::pair<int, QString>> groups;
    for (auto group = counts.cbegin(); group != counts.cend(); ++group)
        groups.emplace_back(-group.value(), group.key());
    std::sort(groups.begin(), groups.end());
    if (groups.size() > MostReasons)
        groups.resize(MostReasons);
    QStringList lines;
    for (const auto& [count, why] : groups)
        lines.append(tr("%n item(s) not copied: %1", "", -count).arg(why));
    return lines;
}
