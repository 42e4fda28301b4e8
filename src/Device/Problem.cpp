#include "Device/Problem.h"

#include "Base/Failure.h"

#include <algorithm>

namespace
{
constexpr std::size_t MostProblems = 32;
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
    const bool isLost = failure.kind == Failure::Kind::Lost;
    add({isLost ? Problem::Kind::Lost : Problem::Kind::Unreadable, words, failure.text()});
}
