#include "Base/StarOrder.h"

#include <algorithm>

int StarOrder::starFirstCompare(QStringView receiver, QStringView other)
{
    if (receiver == Star)
        return -1;
    if (other == Star)
        return 1;
    const int order = receiver.compare(other, Qt::CaseInsensitive);
    return (order > 0) - (order < 0);
}

void StarOrder::sortStarFirst(QStringList& texts)
{
    // The stars go first on their own: std::sort may not be given two that precede each other.
    const auto rest = std::stable_partition(texts.begin(), texts.end(),
                                            [](const QString& text) { return text == Star; });
    std::sort(rest, texts.end(), [](const QString& a, const QString& b) {
        const int order = starFirstCompare(a, b);
        return order != 0 ? order < 0 : a < b;
    });
}
