#include "Device/itdb/ItdbFile.h"

#include "Base/PathName.h"
#include "Base/Utility.h"
#include "Device/Device.h"

#include <limits>

namespace
{
bool hasPossibleSize(Device& device, const QString& path)
{
    return device.getFileSize(path).value_or(0) <= qint64(std::numeric_limits<quint32>::max());
}
} // namespace

void ItdbFile::keepForDiagnosis(Device& device, const QString& path)
{
    if (hasPossibleSize(device, path))
        device.copyOut(path, PathName::join(Utility::logFolder(), PathName::lastComponent(path)),
                       std::nullopt);
}

QByteArray ItdbFile::read(Device& device, const QString& path)
{
    return hasPossibleSize(device, path) ? device.read(path) : QByteArray();
}
