#pragma once

#include <QHash>
#include <QString>
#include <QStringView>

#include <functional>
#include <unordered_set>

/// Gives equal texts one shared buffer: thousands of tracks name the same artist.
class StringPool
{
public:
    QString shared(QStringView text)
    {
        const auto known = _strings.find(text);
        return known != _strings.end() ? *known : *_strings.insert(text.toString()).first;
    }

private:
    struct Hash {
        using is_transparent = void;
        // With the process's seed: the texts are a device's, which must not choose ones that meet.
        std::size_t operator()(QStringView text) const
        {
            return qHash(text, QHashSeed::globalSeed());
        }
    };
    std::unordered_set<QString, Hash, std::equal_to<>> _strings;
};
