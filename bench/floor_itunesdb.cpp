#include "floor_itunesdb.h"

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
            if (field(at + 12) == 1)
                tracks(list);
            else if (field(at + 12) == 2)
                playlists(list);
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
        const QString decoded = QString::fromUtf16(
            reinterpret_cast<const char16_t*>(_bytes + object + 40), field(object + 28) / 2);
        _units += std::size_t(decoded.size());
    }

    void tracks(std::size_t list)
    {
        std::size_t at = list + field(list + 4);
        for (std::uint32_t n = field(list + 8); n > 0; --n, at += field(at + 8)) {
            std::size_t object = at + field(at + 4);
            for (std::uint32_t k = field(at + 12); k > 0; --k, object += field(object + 8)) {
                if (field(object + 12) >= 1 && field(object + 12) <= 5)
                    text(object);
            }
            _units += field(at + 16) + field(at + 40) + field(at + 208);
        }
    }

    void playlists(std::size_t list)
    {
        std::size_t at = list + field(list + 4);
        for (std::uint32_t n = field(list + 8); n > 0; --n, at += field(at + 8)) {
            std::size_t part = at + field(at + 4);
            text(part);
            for (std::uint32_t k = field(at + 12); k > 0; --k)
                part += field(part + 8);
            for (std::uint32_t k = field(at + 16); k > 0; --k, part += field(part + 8))
                _units += field(part + 24);
        }
    }

    const char* _bytes;
    std::size_t _units = 0;
};
} // namespace

std::size_t floorOfITunesDb(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray bytes = file.readAll();
    return Walk(bytes.constData()).database();
}
