#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <functional>
#include <unordered_map>

/// Decodes equal texts once and gives them one shared buffer: thousands of rows name the same
/// artist. Bytes that are no UTF-8 give a null text.
class TextPool
{
public:
    QString shared(QByteArrayView utf8)
    {
        const auto known = _texts.find(utf8);
        if (known != _texts.end())
            return known->second;
        return _texts.emplace(utf8.toByteArray(), decode(utf8)).first->second;
    }

    static QString decode(QByteArrayView utf8)
    {
        if (utf8.isEmpty())
            return QLatin1String("");
        return utf8.isValidUtf8() ? QString::fromUtf8(utf8) : QString();
    }

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(QByteArrayView text) const { return qHash(text); }
    };
    std::unordered_map<QByteArray, QString, Hash, std::equal_to<>> _texts;
};
