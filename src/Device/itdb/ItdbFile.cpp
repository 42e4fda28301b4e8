#include "Device/itdb/ItdbFile.h"

#include "Base/PathName.h"
#include "Base/Utility.h"
#include "Device/Device.h"
#include "Device/itdb/RecordWalk.h"

#include <algorithm>
#include <limits>

namespace
{
/// A file of this size is read whole, whatever it claims.
constexpr qint64 AlwaysRead = qint64(64) << 20;
constexpr qint64 MostKept = qint64(256) << 20;
constexpr std::size_t DataSetCount = 20;
constexpr std::size_t HeaderRead = 24;
/// Players write about ten.
constexpr quint32 MostDataSets = 64;

ByteView viewOf(const QByteArray& bytes)
{
    return std::as_bytes(std::span(bytes.constData(), std::size_t(bytes.size())));
}

/// How far the file reaches by what its first record and its data sets say of themselves.
qint64 claimedSize(Device& device, const QString& path)
{
    const QByteArray header = device.read(path, 0, HeaderRead);
    if (header.size() < qsizetype(HeaderRead))
        return 0;
    qint64 end = ItdbRecord::field(viewOf(header), ItdbRecord::HeaderLength);
    const quint32 count = ItdbRecord::field(viewOf(header), DataSetCount);
    for (quint32 i = 0; i < std::min(count, MostDataSets); ++i) {
        const QByteArray dataSet = device.read(path, quint64(end), ItdbRecord::SmallestRecord);
        if (dataSet.size() < qsizetype(ItdbRecord::SmallestRecord))
            break;
        end += ItdbRecord::field(viewOf(dataSet), ItdbRecord::TotalLength);
    }
    return std::max(end, qint64(ItdbRecord::field(viewOf(header), ItdbRecord::TotalLength)));
}
} // namespace

void ItdbFile::keepForDiagnosis(Device& device, const QString& path)
{
    if (device.getFileSize(path).value_or(0) <= MostKept)
        device.copyOut(path, PathName::join(Utility::logFolder(), PathName::lastComponent(path)),
                       std::nullopt);
}

Expected<ItdbFile::Content> ItdbFile::read(Device& device, const QString& path)
{
    const Expected<FileInfo> found = device.info(path);
    if (!found)
        return found.failure();
    const qint64 size = found->size.value_or(std::numeric_limits<qint64>::max());
    qint64 wanted = size;
    if (size > AlwaysRead)
        wanted = std::clamp(claimedSize(device, path), AlwaysRead, std::min(size, MostBytes));
    Expected<QByteArray> bytes =
        wanted == size ? device.readFile(path) : device.readPart(path, 0, quint64(wanted));
    if (!bytes)
        return bytes.failure();
    return Content{std::move(*bytes), size > wanted && wanted == MostBytes};
}
