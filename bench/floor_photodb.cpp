#include "floor_photodb.h"

#include <QFile>

#include <cstdint>
#include <cstring>

namespace
{
class Walk
{
public:
    explicit Walk(const char* bytes)
        : _bytes(bytes)
    {
    }

    std::size_t database()
    {
        std::size_t at = field(4);
        for (std::uint32_t n = field(20); n > 0; --n, at += field(at + 8)) {
            const std::size_t list = at + field(at + 4);
            std::size_t item = list + field(list + 4);
            for (std::uint32_t k = field(list + 8); k > 0; --k, item += field(item + 8)) {
                if (field(at + 12) == 1)
                    image(item);
                else if (field(at + 12) == 2)
                    album(item);
                else
                    _units += field(item + 16);
            }
        }
        return _units;
    }

private:
    [[nodiscard]] std::uint32_t field(std::size_t offset) const
    {
        std::uint32_t value = 0;
        std::memcpy(&value, _bytes + offset, sizeof value);
        return value;
    }

    void text(std::size_t object)
    {
        const std::size_t body = object + field(object + 4);
        const QString decoded = QString::fromUtf16(
            reinterpret_cast<const char16_t*>(_bytes + body + 12), field(body) / 2);
        _units += std::size_t(decoded.size());
    }

    void image(std::size_t record)
    {
        std::size_t object = record + field(record + 4);
        for (std::uint32_t k = field(record + 12); k > 0; --k, object += field(object + 8)) {
            if (field(object + 12) != 2 && field(object + 12) != 5)
                continue;
            const std::size_t location = object + field(object + 4);
            text(location + field(location + 4));
            for (const std::size_t at : {16, 20, 24, 28, 32})
                _units += field(location + at);
        }
        _units += field(record + 16);
    }

    void album(std::size_t record)
    {
        std::size_t part = record + field(record + 4);
        text(part);
        for (std::uint32_t k = field(record + 12); k > 0; --k)
            part += field(part + 8);
        for (std::uint32_t k = field(record + 16); k > 0; --k, part += field(part + 8))
            _units += field(part + 16);
    }

    const char* _bytes;
    std::size_t _units = 0;
};
} // namespace

std::size_t floorOfPhotoDatabase(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray bytes = file.readAll();
    return Walk(bytes.constData()).database();
}
