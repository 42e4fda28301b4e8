// The main of the test programs that show windows: a desktop, mounts and a home of its own, so
// that no test ever meets a person's screen, devices, files or settings.

#include "Platform/PatientThread.h"
#include "Window/Crash/Application.h"
#include "Window/Style.h"
#include "support/Desktop.h"
#include "support/PrivateMounts.h"
#include "support/phone/PhoneWriteWatch.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace
{
int run(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS();
    PrivateMounts::enter();
    const QTemporaryDir home(QDir::tempPath() + QStringLiteral("/zell-test-XXXXXX"));
    const auto use = [&home](const char* variable, const char* folder) {
        const QString path = home.filePath(QString::fromLatin1(folder));
        QDir().mkpath(path);
        qputenv(variable, QFile::encodeName(path));
    };
    use("HOME", "home");
    use("XDG_DATA_HOME", "home/.local/share");
    use("XDG_CONFIG_HOME", "home/.config");
    use("XDG_CACHE_HOME", "home/.cache");
    use("TMPDIR", "tmp");
    use("XDG_RUNTIME_DIR", "run");
    QFile::setPermissions(home.filePath(QStringLiteral("run")),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);

    const Desktop desktop;
    const Application application(argc, argv);
    Style::install();
    PhoneWriteWatch::install();
    return RUN_ALL_TESTS();
}
} // namespace

int main(int argc, char** argv)
{
    return PatientThread::endProgram(run(argc, argv));
}
