#include "Device/iPhone/PhoneCopy.h"

#include "Base/PathName.h"
#include "Device/Device.h"
#include "Device/DeviceDelegate.h"
#include "Device/iPhone/PhoneFileReader.h"
#include "Platform/File.h"

#include <QDir>
#include <QFileInfo>

namespace
{
using End = CopyResult::End;

constexpr quint32 ChunkSize = 1024 * 1024;
/// Folders may hold links that lead back to them, so a walk needs an end of its own.
constexpr int DeepestFolder = 64;
constexpr int MostLinksInAPath = 4;
constexpr int MostEntries = 100'000;

std::span<const std::byte> view(const QByteArray& bytes)
{
    return std::as_bytes(std::span(bytes.constData(), std::size_t(bytes.size())));
}
} // namespace

PhoneCopy::PhoneCopy(PhoneFiles& files, std::optional<int> progress, File::Mode mode)
    : _files(files)
    , _goOn([this] { return goesOn(); })
    , _progress(progress.value_or(0))
    , _mode(mode)
{
}

CopyResult PhoneCopy::notBegun(const Failure& failure)
{
    switch (failure.kind) {
    case Failure::Kind::Missing:
        return {End::Missing, failure.words};
    case Failure::Kind::Stopped:
        return {End::Stopped, {}};
    default:
        return {End::Failed, failure.text()};
    }
}

CopyResult PhoneCopy::broken(const Failure& failure)
{
    if (failure.kind == Failure::Kind::Stopped)
        return {End::Stopped, {}};
    return {End::Incomplete, failure.text()};
}

CopyResult PhoneCopy::unwritten(const File& destination)
{
    return {destination.wasTaken() ? End::Taken : End::Failed, destination.error()};
}

CopyResult PhoneCopy::cutShort() const
{
    return {End::Incomplete, tr("The connection to the device was lost")};
}

CopyResult PhoneCopy::neverEnds() const
{
    return {End::Incomplete, tr("The folders on the device never end")};
}

bool PhoneCopy::announce() const
{
    DeviceDelegate* delegate = Device::delegate();
    return !delegate || delegate->exported(_progress + _fraction);
}

bool PhoneCopy::goesOn() const
{
    DeviceDelegate* delegate = Device::delegate();
    return !delegate || delegate->waited(_progress + _fraction);
}

CopyResult PhoneCopy::copy(const QString& from, const QString& to)
{
    const Expected<FileInfo> info = _files.info(from, _goOn);
    if (!info)
        return notBegun(info.failure());
    const bool wasThere = QFileInfo(to).exists() || QFileInfo(to).isSymLink();
    CopyResult result = copyEntry(from, to, *info, {});
    if (result.end == End::Stopped && info->kind != FileInfo::Kind::File && !wasThere)
        QDir(to).removeRecursively();
    return result;
}

CopyResult PhoneCopy::copyEntry(const QString& from, const QString& to, const FileInfo& info,
                                Depth depth)
{
    switch (info.kind) {
    case FileInfo::Kind::File:
        return copyFile(from, to, info);
    case FileInfo::Kind::Link: // counts as a folder, whatever it points to
        ++depth.links;
        return copyFolder(from, to, depth);
    case FileInfo::Kind::Folder:
        return copyFolder(from, to, depth);
    case FileInfo::Kind::Other:
        break;
    }
    return {End::Failed, tr("This is neither a file nor a folder")};
}

CopyResult PhoneCopy::copyFolder(const QString& from, const QString& to, Depth depth)
{
    const bool isTooDeep = depth.folders >= DeepestFolder || depth.links > MostLinksInAPath;
    if (isTooDeep)
        return neverEnds();
    const Expected<Entries> entries = _files.entries(from, _goOn);
    if (!entries)
        return notBegun(entries.failure());
    if (!QDir().mkdir(to)) {
        if (!QFileInfo::exists(to))
            return {End::Failed, tr("The folder could not be made")};
        return {_mode == File::Mode::CreateNew ? End::Taken : End::Failed,
                tr("There is something of this name already")};
    }
    return copyEntries(from, to, *entries, {depth.folders + 1, depth.links});
}

CopyResult PhoneCopy::copyEntries(const QString& from, const QString& to, const Entries& entries,
                                  Depth depth)
{
    CopyResult result;
    for (const bool folders : {true, false}) {
        for (const PhoneFiles::Entry& entry : entries) {
            if (folders ? !entry.isFolder() : entry.isFolder())
                continue;
            if (++_entries > MostEntries)
                return neverEnds();
            const CopyResult one = copyEntry(PathName::join(from, entry.name),
                                             PathName::join(to, entry.name), entry.info, depth);
            if (one.end == End::Stopped)
                return one;
            if (one.end != End::Whole && result.end == End::Whole)
                result = {End::Incomplete, entry.name + QStringLiteral(": ") + one.why};
            if (_files.service().loss() != PhoneFileService::Loss::None)
                return result.end == End::Whole ? cutShort() : result;
        }
    }
    return result;
}

CopyResult PhoneCopy::copyFile(const QString& from, const QString& to, const FileInfo& info)
{
    _fraction = 0;
    if (!info.size)
        return {End::Failed, tr("The device does not tell the size of the file")};
    const Expected<quint64> handle = _files.open(from, _goOn);
    if (!handle)
        return notBegun(handle.failure());
    PhoneFileReader reader(_files, from, *handle, {0, *info.size, true, ChunkSize});
    return copyChunks(reader, to, double(*info.size));
}

CopyResult PhoneCopy::copyChunks(PhoneFileReader& reader, const QString& to, double size)
{
    std::optional<File> destination;
    while (reader.next(_goOn)) {
        _fraction = double(reader.position()) / size;
        if (!announce())
            return {End::Stopped, {}};
        if (!destination && !reader.bytes().isEmpty())
            destination.emplace(to, _mode);
        if (destination && !destination->write(view(reader.bytes())))
            return unwritten(*destination);
    }
    const std::optional<Failure>& problem = reader.problem();
    if (problem && !destination)
        return notBegun(*problem);
    if (!destination)
        destination.emplace(to, _mode); // an empty file
    if (!destination->isOpen() || !destination->close())
        return unwritten(*destination);
    return problem ? broken(*problem) : CopyResult();
}
