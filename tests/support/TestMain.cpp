// The main of every test program: an application object, and a home of its own that is removed
// at the end, so that no test ever meets a person's files or settings.

#include "Platform/PatientThread.h"
#include "support/phone/PhoneWriteWatch.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace
{
int run(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const QTemporaryDir home(QDir::tempPath() + QStringLiteral("/zell-test-XXXXXX"));
    if (!home.isValid())
        return 1;
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

    const QCoreApplication application(argc, argv);
    PhoneWriteWatch::install();
    return RUN_ALL_TESTS();
}
} // namespace

int main(int argc, char** argv)
{
    return PatientThread::endProgram(run(argc, argv));
}
