#include "Device/iPhone/PhoneCopy.h"

#include "Base/Exception.h"
#include "Base/PathName.h"
#include "Device/Device.h"
#include "Device/DeviceDelegate.h"
#include "Device/iPhone/AFCDevice.h"
#include "Device/iPhone/AFCFileReader.h"
#include "Device/iPhone/AFCInterface.h"
#include "Platform/AFCConnection.h"
#include "Platform/File.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace
{
using End = CopyResult::End;

constexpr quint32 ChunkSize = 1024 * 1024;
constexpr qint32 ReadMode = 2;
/// Folders may hold links that lead back to them, so a walk needs an end of its own.
constexpr int DeepestFolder = 64;
constexpr int MostLinksInAPath = 4;
constexpr int MostEntries = 100'000;

CopyResult ended(End end, const char* why)
{
    return {end, QCoreApplication::translate("PhoneCopy", why)};
}

/// Tells the delegate how far a copy is; false when it asks to stop.
bool announce(quint64 done, double total, std::optional<int> progress)
{
    DeviceDelegate* delegate = Device::delegate();
    return !delegate || delegate->exported(double(done) / total + progress.value_or(0));
}

std::span<const std::byte> view(const QByteArray& bytes)
{
    return std::as_bytes(std::span(bytes.constData(), std::size_t(bytes.size())));
}
} // namespace

PhoneCopy::PhoneCopy(AFCDevice& phone, std::optional<int> progress, File::Mode mode)
    : _phone(phone)
    , _progress(progress)
    , _mode(mode)
{
}

CopyResult PhoneCopy::copy(const QString& from, const QString& to)
{
    return copyEntry(from, to, {});
}

bool PhoneCopy::isLost() const
{
    return _phone.deviceInterface().connection().isLost();
}

CopyResult PhoneCopy::copyEntry(const QString& from, const QString& to, Depth depth)
{
    const auto attributes = _phone.deviceInterface().getAttributesAtPath(from);
    const QString type = attributes ? AFCInterface::typeIn(*attributes) : QString();
    if (type == u"S_IFREG")
        return copyFile(from, to, AFCInterface::sizeIn(*attributes));
    // A link counts as a folder, whatever it points to.
    depth.links += type == u"S_IFLNK" ? 1 : 0;
    if (type == u"S_IFDIR" || type == u"S_IFLNK")
        return copyFolder(from, to, depth);
    if (isLost())
        return ended(End::Failed, "The connection to the device was lost");
    return ended(End::Missing, "There is no such file on the device");
}

CopyResult PhoneCopy::copyFolder(const QString& from, const QString& to, Depth depth)
{
    if (!QDir().mkdir(to))
        return QFileInfo::exists(to) ? ended(End::Failed, "There is something of this name already")
                                     : ended(End::Failed, "The folder could not be made");
    if (depth.folders >= DeepestFolder || depth.links > MostLinksInAPath)
        return ended(End::Incomplete, "The folders on the device never end");
    CopyResult result;
    const Depth below = {depth.folders + 1, depth.links};
    const auto copyAll = [&](const QStringList& names) {
        for (const QString& name : names) {
            if (isLost() || ++_entries > MostEntries) {
                result = isLost() ? ended(End::Incomplete, "The connection to the device was lost")
                                  : ended(End::Incomplete, "The folders on the device never end");
                return;
            }
            // A stop ends only the file that it was asked for in; the walk goes on.
            const CopyResult one =
                copyEntry(PathName::join(from, name), PathName::join(to, name), below);
            if (one.end != End::Whole && result.end == End::Whole)
                result = {End::Incomplete, name + QStringLiteral(": ") + one.why};
        }
    };
    try {
        copyAll(_phone.listOfFoldersAtPath(from));
        copyAll(_phone.listOfFilesAtPath(from));
    } catch (const Exception&) {
        result = ended(End::Incomplete, "The folder could not be read");
    }
    // The listing itself may have been cut short, which only an answer after it rules out.
    if (result.end == End::Whole && !_phone.deviceInterface().isDirectoryAtPath(from))
        result = ended(End::Incomplete, "The connection to the device was lost");
    return result;
}

CopyResult PhoneCopy::copyFile(const QString& from, const QString& to, double total)
{
    AFCInterface& files = _phone.deviceInterface();
    const quint64 handle = files.openFileAtPath(from, ReadMode);
    if (handle == 0)
        return isLost() ? ended(End::Incomplete, "The connection to the device was lost")
                        : ended(End::Incomplete, "The file on the device could not be opened");
    File destination(to, _mode);
    if (!destination.isOpen()) {
        files.closeFileLater(handle);
        return {destination.wasTaken() ? End::Taken : End::Failed, destination.error()};
    }
    AFCFileReader reader(files, handle, total);
    CopyResult result = copyChunks(reader, total, destination);
    files.closeFileLater(handle); // the last read was answered: this answer tells nothing new
    if (!destination.close() && result.end != End::Stopped)
        result = {End::Failed, destination.error()};
    return result;
}

CopyResult PhoneCopy::copyChunks(AFCFileReader& reader, double total, File& destination)
{
    quint32 size = ChunkSize;
    quint64 done = 0;
    while (reader.read(done, size)) {
        done += size;
        // The phone reads on while this chunk is announced and written.
        reader.readAhead(done, size);
        if (!announce(done, total, _progress))
            return ended(End::Stopped, "");
        if (!destination.write(view(reader.bytes())))
            return {End::Failed, destination.error()};
    }
    if (isLost())
        return ended(End::Incomplete, "The connection to the device was lost");
    if (reader.hasGap())
        return ended(End::Incomplete, "Part of the file could not be read");
    if (double(done) < total)
        return ended(End::Incomplete, "The file ended before its size was reached");
    return {};
}
