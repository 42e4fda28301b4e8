#include "Device/iPhone/PhoneFiles.h"

#include "Base/PathName.h"
#include "Device/iPhone/PhoneFailure.h"
#include "Device/iPhone/PhoneFileReader.h"
#include "Platform/Host.h"
#include "Platform/PhonePacket.h"

#include <QLoggingCategory>

#include <deque>
#include <limits>

namespace
{
/// What only somebody who looks for a fault wants to read.
Q_LOGGING_CATEGORY(phoneLog, "zell.phone", QtFatalMsg)

constexpr quint32 PieceSize = 256 * 1024;
/// A folder of more names than this is none that a phone has.
constexpr qsizetype MostNames = 1'000'000;
/// Questions about the entries of a folder that are asked before the first answer is needed.
constexpr std::size_t QuestionsAhead = 64;
constexpr int ReadMode = 2; // as the fixed text of a failure names it

/// A name that stands for an entry of its folder and leads nowhere else.
bool isBareName(const QString& name)
{
    return !name.isEmpty() && name != u"." && name != u".." && !name.contains(u'/');
}

FileInfo::Kind kindOf(const QByteArray& type)
{
    return type == "S_IFREG"   ? FileInfo::Kind::File
           : type == "S_IFDIR" ? FileInfo::Kind::Folder
           : type == "S_IFLNK" ? FileInfo::Kind::Link
                               : FileInfo::Kind::Other;
}

std::optional<qint64> sizeFrom(const QByteArray& text)
{
    bool isNumber = false;
    const qint64 size = text.toLongLong(&isNumber);
    return isNumber && size >= 0 ? std::optional(size) : std::nullopt;
}

/// Keys and values in turn, each with a zero behind it; a repeated key keeps its last value.
FileInfo infoIn(const QByteArray& keysAndValues)
{
    FileInfo info;
    info.kind = FileInfo::Kind::Other;
    const QByteArrayList texts = keysAndValues.split('\0');
    for (qsizetype i = 0; i + 1 < texts.size(); i += 2) {
        if (texts[i] == "st_ifmt")
            info.kind = kindOf(texts[i + 1]);
        else if (texts[i] == "st_size")
            info.size = sizeFrom(texts[i + 1]);
    }
    return info;
}

/// Whether so much more fits into memory; asked for now and then, as a file grows.
bool fitsIntoMemory(qsizetype size)
{
    constexpr qsizetype MiB = 1024 * 1024;
    constexpr qsizetype Unasked = 64 * MiB;
    // A buffer that is full is moved into one of twice its size.
    return size < Unasked || size % Unasked >= qsizetype(PieceSize) ||
           double(2 * size) / double(MiB) < Host::availableMemory();
}
} // namespace

PhoneFiles::PhoneFiles(std::shared_ptr<PhoneFileService> service)
    : _service(std::move(service))
{
}

bool PhoneFiles::Entry::isFolder() const
{
    return info.kind == FileInfo::Kind::Folder || info.kind == FileInfo::Kind::Link;
}

bool PhoneFiles::Entry::isFile() const
{
    return info.kind == FileInfo::Kind::File;
}

Failure PhoneFiles::failure(const PhoneAnswer& answer, const QString& words,
                            const QString& call) const
{
    switch (answer.end) {
    case PhoneAnswer::End::GivenUp:
        return {Failure::Kind::Stopped, tr("It was stopped"), {}};
    case PhoneAnswer::End::Lost:
        return PhoneFailure::lost(_service->loss());
    case PhoneAnswer::End::Answered:
        break;
    }
    if (answer.status == PhonePacket::NotFound)
        return {Failure::Kind::Missing, tr("There is no such file on the device"), {}};
    const QString exact = QStringLiteral("%1: %2").arg(call).arg(answer.status);
    qCWarning(phoneLog, "%s", qPrintable(exact));
    return {Failure::Kind::Unreadable, words, exact};
}

Expected<FileInfo> PhoneFiles::infoFrom(const PhoneFileService::Asked& asked,
                                        const GoOn& goOn) const
{
    const PhoneAnswer answer = _service->wait(asked, goOn);
    if (!answer.isGood())
        return failure(answer, tr("The phone does not tell what this is"),
                       QStringLiteral("AFCFileInfoOpen"));
    return infoIn(answer.data);
}

Expected<FileInfo> PhoneFiles::info(const QString& path, const GoOn& goOn) const
{
    return infoFrom(_service->askForInfo(path), goOn);
}

Expected<QStringList> PhoneFiles::names(const QString& folder, const GoOn& goOn) const
{
    const QString words = tr("The folder could not be read");
    const QString call = QStringLiteral("AFCDirectoryOpen");
    const PhoneAnswer answer = _service->wait(_service->askForNames(folder), goOn);
    if (!answer.isGood())
        return failure(answer, words, call);
    if (answer.data.count('\0') > MostNames)
        return Failure{Failure::Kind::Unreadable, tr("The folder holds too many files"), {}};
    QStringList names;
    for (const QByteArray& text : answer.data.split('\0')) {
        const QString name = QString::fromUtf8(text);
        if (isBareName(name))
            names.append(name);
    }
    return names;
}

Expected<std::vector<PhoneFiles::Entry>> PhoneFiles::entries(const QString& folder,
                                                             const GoOn& goOn) const
{
    const Expected<QStringList> all = names(folder, goOn);
    if (!all)
        return all.failure();
    std::vector<Entry> entries;
    entries.reserve(std::size_t(all->size()));
    std::deque<PhoneFileService::Asked> ahead;
    auto next = all->begin();
    for (const QString& name : *all) {
        for (; next != all->end() && ahead.size() < QuestionsAhead; ++next)
            ahead.push_back(_service->askForInfo(PathName::join(folder, *next)));
        const Expected<FileInfo> info = infoFrom(ahead.front(), goOn);
        ahead.pop_front();
        if (info)
            entries.push_back({name, *info});
        else if (!info.failedAs(Failure::Kind::Missing)) // which went away meanwhile
            return info.failure();
    }
    return entries;
}

Expected<quint64> PhoneFiles::open(const QString& path, const GoOn& goOn) const
{
    const PhoneAnswer answer = _service->wait(_service->askToOpen(path), goOn);
    if (answer.isGood() && answer.handle != 0)
        return answer.handle;
    return failure(answer, tr("The file on the device could not be opened"),
                   QStringLiteral("AFCFileRefOpen(%1)").arg(ReadMode));
}

Expected<qint64> PhoneFiles::sizeOfFile(const QString& path) const
{
    const Expected<FileInfo> found = info(path);
    if (!found)
        return found.failure();
    if (found->kind != FileInfo::Kind::File)
        return Failure{Failure::Kind::Refused, tr("This is no file"), {}};
    if (!found->size)
        return Failure{
            Failure::Kind::Unreadable, tr("The device does not tell the size of the file"), {}};
    return *found->size;
}

Expected<QByteArray> PhoneFiles::read(const QString& path) const
{
    const Expected<qint64> size = sizeOfFile(path);
    if (!size)
        return size.failure();
    return readRange(path, 0, *size, true);
}

Expected<QByteArray> PhoneFiles::readPart(const QString& path, quint64 offset, quint64 length) const
{
    const Expected<qint64> size = sizeOfFile(path);
    if (!size)
        return size.failure();
    const quint64 first = std::min(offset, quint64(*size));
    const quint64 end = first + std::min(length, quint64(*size) - first);
    return readRange(path, qint64(first), qint64(end), false);
}

Expected<QByteArray> PhoneFiles::readRange(const QString& path, qint64 first, qint64 end,
                                           bool isWholeFile) const
{
    const Expected<quint64> handle = open(path);
    if (!handle)
        return handle.failure();
    PhoneFileReader reader(*this, path, *handle, {first, end, isWholeFile, PieceSize});
    QByteArray data("", 0);
    while (reader.next({})) {
        if (reader.problem())
            break; // with a hole in it, the rest would stand in the wrong place
        data.append(reader.bytes());
        if (!fitsIntoMemory(data.size()))
            return Failure{Failure::Kind::Unreadable, tr("The file does not fit into memory"), {}};
    }
    if (const std::optional<Failure> problem = reader.problem())
        return *problem;
    return data;
}
