#include "Platform/Host.h"

#include <QFile>
#include <QRegularExpression>

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <unistd.h>

#include <array>
#include <memory>

namespace
{
constexpr double UnknownMemory = 2147483647.0;
constexpr double KiBInMiB = 1024.0;

QString readTextFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The first capture of `pattern` at the start of a line of `text`, or empty.
QString captured(const QString& text, const QString& pattern)
{
    const QRegularExpression expression(u'^' + pattern, QRegularExpression::MultilineOption);
    return expression.match(text).captured(1);
}
} // namespace

double Host::availableMemory()
{
    // What can be had without swapping: free pages alone would be next to nothing on a system
    // that caches its files.
    const QString memory = readTextFile(QStringLiteral("/proc/meminfo"));
    bool known = false;
    const double kib =
        captured(memory, QStringLiteral("MemAvailable:\\s+(\\d+) kB")).toDouble(&known);
    return known ? kib / KiBInMiB : UnknownMemory;
}

QString Host::computerName()
{
    const QString pretty = captured(readTextFile(QStringLiteral("/etc/machine-info")),
                                    QStringLiteral("PRETTY_HOSTNAME=[\"']?([^\"'\\n]*)"));
    if (!pretty.isEmpty())
        return pretty;
    std::array<char, 256> name{};
    gethostname(name.data(), name.size() - 1);
    return QString::fromLocal8Bit(name.data());
}

QString Host::currentIP4Address()
{
    ifaddrs* list = nullptr;
    if (getifaddrs(&list) != 0)
        return QLatin1String("");
    const std::unique_ptr<ifaddrs, decltype(&freeifaddrs)> owner(list, &freeifaddrs);
    for (const ifaddrs* entry = list; entry; entry = entry->ifa_next) {
        const bool usable = (entry->ifa_flags & IFF_UP) != 0 &&
                            (entry->ifa_flags & IFF_LOOPBACK) == 0 && entry->ifa_addr &&
                            entry->ifa_addr->sa_family == AF_INET;
        if (!usable)
            continue;
        const auto* address = reinterpret_cast<const sockaddr_in*>(entry->ifa_addr);
        std::array<char, INET_ADDRSTRLEN> text{};
        if (inet_ntop(AF_INET, &address->sin_addr, text.data(), text.size()))
            return QString::fromLatin1(text.data());
    }
    return QLatin1String("");
}
