#pragma once

#include <QByteArray>
#include <QRandomGenerator>
#include <QtEndian>

#include <algorithm>
#include <vector>

/// The lengths and counts of a binary library that a test wrote, to make each of them wrong.
namespace WrongFields
{
/// What a wrong number in a field may cost.
enum class Cost {
    Nothing, ///< what stands there tells as much
    Part,    ///< something of the record that it stands in, which is said
    Value,   ///< the same, and nothing tells that it is wrong
    Items    ///< items that nobody counts any more
};

struct Field {
    qsizetype at = 0;
    Cost cost = Cost::Nothing;
    qsizetype record = 0; ///< where the item begins that it is a part of; 0 for none
};

struct Layout {
    const char* tag;
    std::vector<std::pair<int, Cost>> fields;
    bool isItem = false; ///< that a person would miss: a track, a playlist, a photo
};

/// All fields of the layouts in the bytes. Tags stand nowhere else in what the makers write.
inline std::vector<Field> in(const QByteArray& bytes, const std::vector<Layout>& layouts)
{
    std::vector<Field> fields;
    qsizetype item = 0;
    for (qsizetype at = 0; at + 4 <= bytes.size(); ++at) {
        const auto layout = std::find_if(layouts.begin(), layouts.end(), [&](const Layout& one) {
            return bytes.mid(at, 4) == one.tag;
        });
        if (layout == layouts.end())
            continue;
        if (layout->isItem)
            item = at;
        else if (bytes.mid(at, 4) == "mhsd")
            item = 0;
        for (const auto& [offset, cost] : layout->fields)
            fields.push_back({at + offset, cost, item});
    }
    return fields;
}

/// The numbers that a field is made to hold, none of which it holds.
inline std::vector<quint32> valuesFor(quint32 value, QRandomGenerator& random)
{
    std::vector<quint32> values = {value + 1, value - 1,   0,
                                   value / 2, 0x80000000U, 0xffffffffU,
                                   12,        value + 36,  random.generate()};
    std::erase(values, value);
    return values;
}

inline quint32 at(const QByteArray& bytes, qsizetype offset)
{
    return qFromLittleEndian<quint32>(bytes.constData() + offset);
}

inline QByteArray with(QByteArray bytes, qsizetype offset, quint32 value)
{
    qToLittleEndian(value, bytes.data() + offset);
    return bytes;
}
} // namespace WrongFields
