#include "Device/iPhone/AFCInterface.h"

#include "Base/Exception.h"
#include "Platform/AFCConnection.h"

#include <QLoggingCategory>

#include <cmath>
#include <limits>

namespace
{
constexpr qint32 CreateMode = 3;
} // namespace

AFCInterface::AFCInterface(std::shared_ptr<AFCConnection> connection)
    : _connection(std::move(connection))
{
}

std::optional<AFCInterface::Attributes> AFCInterface::getAttributesAtPath(const QString& path)
{
    AFCList keysAndValues;
    if (_connection->fileInfoOpen(path, keysAndValues) != 0)
        return std::nullopt;
    return createDictionaryForAFCDictionary(keysAndValues);
}

std::optional<AFCInterface::Attributes> AFCInterface::getDeviceAttributes()
{
    AFCList keysAndValues;
    if (_connection->deviceInfoOpen(keysAndValues) != 0)
        return std::nullopt;
    return createDictionaryForAFCDictionary(keysAndValues);
}

AFCInterface::Attributes AFCInterface::createDictionaryForAFCDictionary(AFCList& keysAndValues)
{
    Attributes attributes;
    for (;;) {
        const QByteArray key = keysAndValues.next();
        const QByteArray value = keysAndValues.next();
        if (key.isNull() || value.isNull())
            return attributes;
        attributes[QString::fromUtf8(key)] = QString::fromUtf8(value);
    }
}

QString AFCInterface::typeIn(const Attributes& attributes)
{
    return attributes.value(QStringLiteral("st_ifmt"));
}

double AFCInterface::sizeIn(const Attributes& attributes)
{
    const double size = attributes.value(QStringLiteral("st_size")).toDouble();
    return std::isfinite(size) ? size : 0.0;
}

bool AFCInterface::isFileAtPath(const QString& path)
{
    const std::optional<Attributes> attributes = getAttributesAtPath(path);
    return attributes && typeIn(*attributes) == u"S_IFREG";
}

bool AFCInterface::isDirectoryAtPath(const QString& path)
{
    const std::optional<Attributes> attributes = getAttributesAtPath(path);
    if (!attributes)
        return false;
    const QString type = typeIn(*attributes);
    return type == u"S_IFDIR" || type == u"S_IFLNK";
}

QStringList AFCInterface::listFilesInPath(const QString& path)
{
    AFCList entries;
    if (_connection->directoryOpen(path, entries) != 0)
        throw Exception(QStringLiteral(""), QStringLiteral(""));
    QStringList names;
    for (QByteArray name = entries.next(); !name.isNull(); name = entries.next())
        names.append(QString::fromUtf8(name));
    return names;
}

quint64 AFCInterface::openFileAtPath(const QString& path, qint32 mode)
{
    quint64 handle = 0;
    const int error = _connection->fileRefOpen(path, qint64(mode), handle);
    if (error == 0)
        return handle;
    qWarning("AFCFileRefOpen(%d): %d", mode, error);
    return 0;
}

bool AFCInterface::closeFile(quint64 handle)
{
    return _connection->fileRefClose(handle) == 0;
}

void AFCInterface::closeFileLater(quint64 handle)
{
    _connection->fileRefCloseLater(handle);
}

QByteArray AFCInterface::readFromFile(quint64 handle, quint32& size, quint64 offset)
{
    return finishReading(startReading(handle, size, offset), size).value_or(QByteArray());
}

std::shared_ptr<AFCRead> AFCInterface::startReading(quint64 handle, quint32 size, quint64 offset,
                                                    QByteArray buffer)
{
    // Positions on the wire are signed.
    if (offset > quint64(std::numeric_limits<qint64>::max()))
        return nullptr;
    return _connection->fileRefReadLater(handle, qint64(offset), size, std::move(buffer));
}

std::shared_ptr<AFCRead>
AFCInterface::readOn(quint64 handle, const std::shared_ptr<AFCRead>& before, QByteArray buffer)
{
    return _connection->fileRefReadOn(handle, before, std::move(buffer));
}

std::optional<QByteArray> AFCInterface::finishReading(const std::shared_ptr<AFCRead>& read,
                                                      quint32& size)
{
    QByteArray bytes;
    const int error =
        read ? _connection->fileRefFinishRead(read, size, bytes) : AFCConnection::NotAsked;
    if (error == AFCConnection::NotAsked)
        return std::nullopt;
    if (error != 0) {
        if (error != AFCConnection::NotInPlace)
            qWarning("ret: %d", error);
        return QByteArray();
    }
    return bytes.isNull() ? QByteArray("", 0) : bytes;
}

bool AFCInterface::writeToFile(quint64 handle, const QByteArray& data, quint64 offset)
{
    if (data.isNull())
        return true;
    if (_connection->fileRefSeek(handle, qint64(offset)) != 0)
        return false;
    return _connection->fileRefWrite(handle, data) == 0;
}

bool AFCInterface::setSizeOfFile(const QString& path, quint64 size)
{
    quint64 handle = 0;
    if (_connection->fileRefOpen(path, CreateMode, handle) != 0)
        return false;
    const bool done = _connection->fileRefSetFileSize(handle, size) == 0;
    _connection->fileRefClose(handle);
    return done;
}

bool AFCInterface::removePath(const QString& path)
{
    return _connection->removePath(path) == 0;
}

bool AFCInterface::renamePath(const QString& from, const QString& to)
{
    return _connection->renamePath(from, to) == 0;
}

bool AFCInterface::createDirectory(const QString& path)
{
    return _connection->directoryCreate(path) == 0;
}
