#include "Device/Problem.h"

#include "Base/Failure.h"

#include <algorithm>

namespace
{
constexpr std::size_t MostProblems = 32;
constexpr qsizetype MostLetters = 300;

/// A text that can be shown: exact texts quote names out of a device's files, which may be of any
/// length and hold what a terminal obeys.
QString printable(QString text)
{
    if (text.size() > MostLetters)
        text = text.first(MostLetters) + QChar(u'\u2026');
    for (QChar& letter : text) {
        if (letter.category() == QChar::Other_Control || letter.category() == QChar::Other_Format)
            letter = QChar::ReplacementCharacter;
    }
    return text;
}
} // namespace

QString Problem::kindName() const
{
    switch (kind) {
    case Kind::Damaged:
        return QStringLiteral("damaged");
    case Kind::NotUnderstood:
        return QStringLiteral("notUnderstood");
    case Kind::Unreadable:
        return QStringLiteral("unreadable");
    case Kind::CutOff:
        return QStringLiteral("cutOff");
    case Kind::Lost:
        return QStringLiteral("lost");
    }
    return {};
}

QString Problem::text() const
{
    return exact.isEmpty() ? words : words + QStringLiteral(" (%1)").arg(exact);
}

void ProblemList::add(Problem problem)
{
    problem.exact = printable(std::move(problem.exact));
    const bool isKnown = std::any_of(_problems.begin(), _problems.end(), [&](const Problem& one) {
        return one.kind == problem.kind && one.words == problem.words;
    });
    if (!isKnown && _problems.size() < MostProblems)
        _problems.push_back(std::move(problem));
}

void ProblemList::add(Problem::Kind kind, const QString& words, const QString& exact)
{
    add({kind, words, exact});
}

void ProblemList::add(const Failure& failure, const QString& words)
{
    const Problem::Kind kind = failure.kind == Failure::Kind::Lost      ? Problem::Kind::Lost
                               : failure.kind == Failure::Kind::Damaged ? Problem::Kind::Damaged
                                                                        : Problem::Kind::Unreadable;
    add({kind, words, failure.text()});
}
