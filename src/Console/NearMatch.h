#pragma once

#include <QString>
#include <QStringList>

/// Guessing which word was meant by one that is none.
namespace NearMatch
{
/// That of `words` which `typed` is most like, in any case; null when none is near.
QString of(const QString& typed, const QStringList& words);
} // namespace NearMatch
