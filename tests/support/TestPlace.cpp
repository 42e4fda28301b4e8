#include "support/TestPlace.h"

#include "support/PrivateMounts.h"

#include <QDir>
#include <QFile>

#include <cstdio>
#include <stdexcept>
#include <system_error>

namespace
{
/// What comes from now on is not seen here, and what there is of players is hidden.
void leaveTheMountsOfTheComputer()
{
    try {
        PrivateMounts::enter();
        PrivateMounts::hidePlayers();
    } catch (const std::system_error& error) {
        // Tests that mount something say so themselves; the others can do without.
        std::fprintf(stderr, "The mounts of this computer stay visible: %s\n", error.what());
    }
}
} // namespace

TestPlace::TestPlace()
    : _home(QDir::tempPath() + QStringLiteral("/zell-test-XXXXXX"))
{
    leaveTheMountsOfTheComputer();
    if (!_home.isValid())
        throw std::runtime_error(qPrintable(_home.errorString()));
    useFolder("HOME", "home");
    useFolder("XDG_DATA_HOME", "home/.local/share");
    useFolder("XDG_CONFIG_HOME", "home/.config");
    useFolder("XDG_CACHE_HOME", "home/.cache");
    useFolder("TMPDIR", "tmp");
    useFolder("XDG_RUNTIME_DIR", "run");
    QFile::setPermissions(_home.filePath(QStringLiteral("run")),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    useNobody("USBMUXD_SOCKET_ADDRESS", "UNIX:");
    useNobody("DBUS_SESSION_BUS_ADDRESS", "unix:path=");
    useNobody("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=");
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "XDG_CURRENT_DESKTOP", "LANGUAGE"})
        qunsetenv(variable);
    // Texts are compared as they stand in the sources, and names of files are UTF-8.
    qputenv("LC_ALL", "C.UTF-8");
}

void TestPlace::useFolder(const char* variable, const char* folder) const
{
    const QString path = _home.filePath(QString::fromLatin1(folder));
    QDir().mkpath(path);
    qputenv(variable, QFile::encodeName(path));
}

void TestPlace::useNobody(const char* variable, const char* socket) const
{
    qputenv(variable, socket + QFile::encodeName(_home.filePath(QStringLiteral("nobody"))));
}
