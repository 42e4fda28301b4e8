#include "Window/Crash/CrashFile.h"

#include "Base/PathName.h"
#include "Base/Utility.h"
#include "Window/Crash/MemoryMap.h"

#include <QDateTime>
#include <QDir>
#include <QFile>

#include <fcntl.h>
#include <limits.h>
#include <unistd.h>

#include <array>
#include <charconv>
#include <cstring>

namespace
{
constexpr qint64 MostBytes = 4 * 1024 * 1024; ///< far more than any map of memory has
constexpr int MostFiles = 8;
constexpr int MostAddresses = 256;
// A file is four texts, each but the last ended by a zero byte: name, reason, addresses, map.
constexpr qsizetype Texts = 4;

std::array<char, PATH_MAX> preparedPath{};

void writeAll(int file, const char* bytes, std::size_t size) noexcept
{
    while (size > 0) {
        const ssize_t written = write(file, bytes, size);
        if (written <= 0)
            return;
        bytes += written;
        size -= std::size_t(written);
    }
}

void writeText(int file, std::string_view text) noexcept
{
    writeAll(file, text.data(), text.size());
    writeAll(file, "", 1);
}

void writeAddresses(int file, void* const* addresses, int count) noexcept
{
    for (int i = 0; i < count; ++i) {
        std::array<char, 24> line{};
        const auto end = std::to_chars(line.data(), line.data() + line.size() - 1,
                                       reinterpret_cast<std::uintptr_t>(addresses[i]), 16);
        *end.ptr = '\n';
        writeAll(file, line.data(), std::size_t(end.ptr + 1 - line.data()));
    }
    writeAll(file, "", 1);
}

void writeMap(int file) noexcept
{
    const int map = open("/proc/self/maps", O_RDONLY | O_CLOEXEC);
    if (map < 0)
        return;
    std::array<char, 4096> bytes{};
    for (ssize_t size = 0; (size = read(map, bytes.data(), bytes.size())) > 0;)
        writeAll(file, bytes.data(), std::size_t(size));
    close(map);
}

RaisedException parse(const QByteArray& bytes)
{
    const QByteArrayList texts = bytes.split('\0');
    RaisedException raised;
    raised.name = QString::fromUtf8(texts.value(0));
    raised.reason = QString::fromUtf8(texts.value(1));
    const MemoryMap then(texts.value(Texts - 1));
    const MemoryMap now = MemoryMap::ofThisProcess();
    for (const QByteArray& line : texts.value(2).split('\n')) {
        bool isNumber = false;
        const quint64 address = line.toULongLong(&isNumber, 16);
        if (isNumber && raised.callStackReturnAddresses.size() < MostAddresses)
            raised.callStackReturnAddresses.push_back(now.samePlace(then, address));
    }
    // An exception without any would be given the stack of whoever reads this.
    if (raised.callStackReturnAddresses.empty())
        raised.callStackReturnAddresses.push_back(nullptr);
    return raised;
}
} // namespace

QString CrashFile::folder()
{
    const QString path = PathName::join(Utility::applicationSupportFolder(), u"crash");
    Utility::createFolder(path);
    return path;
}

void CrashFile::prepare(const QString& folder)
{
    // By time first: names are in the order of the runs.
    const QString name = QStringLiteral("%1-%2.crash")
                             .arg(QDateTime::currentMSecsSinceEpoch(), 15, 10, QLatin1Char('0'))
                             .arg(getpid());
    const QByteArray path = QFile::encodeName(PathName::join(folder, name));
    preparedPath.fill('\0');
    if (std::size_t(path.size()) < preparedPath.size())
        std::memcpy(preparedPath.data(), path.constData(), std::size_t(path.size()));
}

void CrashFile::write(std::string_view name, std::string_view reason, void* const* addresses,
                      int count) noexcept
{
    const int file =
        open(preparedPath.data(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (file < 0)
        return;
    writeText(file, name);
    writeText(file, reason);
    writeAddresses(file, addresses, count);
    writeMap(file);
    close(file);
}

std::vector<RaisedException> CrashFile::takeAll(const QString& folder)
{
    std::vector<RaisedException> all;
    const QDir dir(folder);
    for (const QString& name :
         dir.entryList({QStringLiteral("*.crash")}, QDir::Files | QDir::NoSymLinks, QDir::Name)) {
        QFile file(dir.filePath(name));
        // A program that dies at every start leaves many; the first few say it all.
        if (all.size() < MostFiles && file.open(QIODevice::ReadOnly))
            all.push_back(parse(file.read(MostBytes)));
        file.close();
        // Before it is shown: if that should fail, the next run must not fail the same way.
        file.remove();
    }
    return all;
}
