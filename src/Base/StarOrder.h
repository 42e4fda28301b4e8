#pragma once

#include <QStringList>
#include <QStringView>

/// Orderings of text that the lists of the program share.
class StarOrder
{
public:
    /// The wildcard key of the browser: it stands for every genre, artist or album.
    static constexpr QStringView Star = u"*";

    /// -1, 0 or 1 as `receiver` comes before, with or after `other`: "*" comes first, everything
    /// else in case-insensitive order without a locale. "*" against "*" is -1 as well, so this is
    /// no strict weak order; `sortStarFirst` copes with that.
    static int starFirstCompare(QStringView receiver, QStringView other);

    /// Sorts by `starFirstCompare`; texts that differ only in case keep a fixed order.
    static void sortStarFirst(QStringList& texts);
};
