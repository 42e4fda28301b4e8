#include "support/PrivateMounts.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <stdexcept>
#include <system_error>

namespace
{
void check(int result, const char* what)
{
    if (result != 0)
        throw std::system_error(errno, std::generic_category(), what);
}

void write(const QString& path, const QByteArray& text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.flush())
        throw std::runtime_error(qPrintable(path + QStringLiteral(": ") + file.errorString()));
}

void run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    if (!process.waitForFinished(60000) || process.exitCode() != 0)
        throw std::runtime_error(program.toStdString() + ": " + process.readAll().toStdString());
}

void mountAt(const QString& source, const QString& path, const char* type, unsigned long flags,
             const QByteArray& options = {})
{
    QDir().mkpath(path);
    check(mount(QFile::encodeName(source).constData(), QFile::encodeName(path).constData(), type,
                flags, options.isEmpty() ? nullptr : options.constData()),
          qPrintable(path));
}
/// A path of the kernel's table, which writes blanks and the like as octal numbers.
QString pathOf(QByteArray field)
{
    for (const char* escape : {"\\040", "\\011", "\\012", "\\134"})
        field.replace(escape, QByteArray(1, char(QByteArray(escape + 1).toInt(nullptr, 8))));
    return QFile::decodeName(field);
}
} // namespace

namespace PrivateMounts
{
void enter()
{
    const auto user = QByteArray::number(geteuid());
    const auto group = QByteArray::number(getegid());
    const bool root = geteuid() == 0;
    check(unshare(root ? CLONE_NEWNS : CLONE_NEWNS | CLONE_NEWUSER), "unshare");
    if (!root) {
        write(QStringLiteral("/proc/self/setgroups"), "deny");
        write(QStringLiteral("/proc/self/uid_map"), "0 " + user + " 1");
        write(QStringLiteral("/proc/self/gid_map"), "0 " + group + " 1");
    }
    check(mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr), "private mounts");
}

void hidePlayers()
{
    QFile table(QStringLiteral("/proc/self/mountinfo"));
    if (!table.open(QIODevice::ReadOnly))
        throw std::runtime_error(qPrintable(table.errorString()));
    for (const QByteArray& line : table.readAll().split('\n')) {
        // A look at a dead mount of a network would never return; a player has a device.
        const QByteArrayList fields = line.split(' ');
        if (fields.size() < 10 || fields[2].startsWith("0:"))
            continue;
        const QString path = pathOf(fields[4]);
        if (QFile::exists(path + QStringLiteral("/iPod_Control")) ||
            QFile::exists(path + QStringLiteral("/iTunes_Control")))
            mountAt(QStringLiteral("tmpfs"), path, "tmpfs", MS_RDONLY);
    }
}

std::unique_ptr<Mount> Mount::bind(const QString& folder, const QString& path)
{
    mountAt(folder, path, nullptr, MS_BIND);
    return std::unique_ptr<Mount>(new Mount(path));
}

std::unique_ptr<Mount> Mount::readOnlyBind(const QString& folder, const QString& path)
{
    std::unique_ptr<Mount> mount = bind(folder, path);
    mountAt(folder, path, nullptr, MS_BIND | MS_REMOUNT | MS_RDONLY);
    return mount;
}

std::unique_ptr<Mount> Mount::memory(const QString& path, qint64 bytes)
{
    mountAt(QStringLiteral("tmpfs"), path, "tmpfs", 0, "size=" + QByteArray::number(bytes));
    return std::unique_ptr<Mount>(new Mount(path));
}

std::unique_ptr<Mount> Mount::terminals(const QString& path)
{
    mountAt(QStringLiteral("devpts"), path, "devpts", 0);
    return std::unique_ptr<Mount>(new Mount(path));
}

std::unique_ptr<Mount> Mount::image(const QString& imageFile, const QString& path)
{
    QDir().mkpath(path);
    run(QStringLiteral("mount"), {QStringLiteral("-o"), QStringLiteral("loop"), imageFile, path});
    return std::unique_ptr<Mount>(new Mount(path));
}

Mount::Mount(const QString& path)
    : _path(path)
{
}

Mount::~Mount()
{
    unmount();
}

void Mount::unmount()
{
    if (_mounted)
        umount2(QFile::encodeName(_path).constData(), MNT_DETACH);
    _mounted = false;
}

bool canMountImages()
{
    // A namespace of one's own gives the rights over mounts, but none over loop devices.
    return access("/dev/loop-control", R_OK | W_OK) == 0;
}

void makeImage(const QString& imageFile, const QString& folder, int mebibytes)
{
    QFile file(imageFile);
    if (!file.open(QIODevice::WriteOnly) || !file.resize(qint64(mebibytes) * 1024 * 1024))
        throw std::runtime_error(qPrintable(file.errorString()));
    file.close();
    run(QStringLiteral("mke2fs"),
        {QStringLiteral("-q"), QStringLiteral("-t"), QStringLiteral("ext4"), QStringLiteral("-d"),
         folder, imageFile});
}
} // namespace PrivateMounts
