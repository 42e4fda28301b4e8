#include "Device/CopyResult.h"
#include "Device/Device.h"
#include "Device/PhotoDb.h"
#include "Device/sql/PhotosSqliteReader.h"

#include <QFile>

#include <cstddef>
#include <cstdint>

namespace
{
/// A phone whose only file is the database. The copy for diagnosis is left out.
class Phone final : public Device
{
public:
    explicit Phone(QByteArray database)
        : _database(std::move(database))
    {
        _prefix = QStringLiteral("/");
    }
    ~Phone() override { releaseReaders(); }

    Expected<FileInfo> info(const QString& path) override
    {
        if (!path.endsWith(u"/Photos.sqlite"))
            return Device::info(path);
        return FileInfo{FileInfo::Kind::File, _database.size()};
    }
    CopyResult copyOut(const QString&, const QString& to, std::optional<int> progress) override
    {
        QFile file(to);
        if (progress && file.open(QIODevice::WriteOnly))
            file.write(_database);
        return {};
    }

private:
    QByteArray _database;
};
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Phone phone(QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size)));
    const auto library = PhotosSqliteReader::initWithDevice(phone);
    std::size_t seen = 0;
    for (const Photo* photo : library->photos()) {
        if (photo->album)
            seen += photo->album->photos.size();
    }
    for (const Album* album : library->albums()) {
        for (const Photo* photo : album->photos)
            seen += std::size_t(photo->fullSizeFile.size());
    }
    static volatile std::size_t sink = 0;
    sink = sink + seen;
    return 0;
}
