#include "Console/NearMatch.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace
{
/// Words longer than this are nobody's slip of the finger.
constexpr qsizetype LongestWord = 64;

/// How many letters must be put in, taken out or changed to come from one word to the other.
qsizetype distance(const QString& one, const QString& other)
{
    std::vector<qsizetype> row(std::size_t(other.size()) + 1);
    std::iota(row.begin(), row.end(), qsizetype(0));
    for (qsizetype i = 0; i < one.size(); ++i) {
        qsizetype before = row[0];
        row[0] = i + 1;
        for (qsizetype j = 0; j < other.size(); ++j) {
            const auto column = std::size_t(j) + 1;
            const qsizetype changed = before + (one[i] == other[j] ? 0 : 1);
            before = row[column];
            row[column] = std::min({changed, row[column] + 1, row[column - 1] + 1});
        }
    }
    return row.back();
}
} // namespace

QString NearMatch::of(const QString& typed, const QStringList& words)
{
    if (typed.isEmpty() || typed.size() > LongestWord)
        return {};
    const QString wanted = typed.toCaseFolded();
    QString best;
    qsizetype bestDistance = std::max(qsizetype(1), wanted.size() / 3) + 1;
    for (const QString& word : words) {
        const QString folded = word.toCaseFolded();
        // Who typed the beginning of a word most likely meant it.
        const bool begins = wanted.size() > 1 && folded.startsWith(wanted);
        const qsizetype found = begins ? 0 : distance(wanted, folded);
        if (found < bestDistance) {
            best = word;
            bestDistance = found;
        }
    }
    return best;
}
