#include "Base/Program.h"

#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

TEST(ProgramTest, NamesItself)
{
    EXPECT_EQ(Program::briefName(), "Zell iPod iPhone Transfer");
    EXPECT_EQ(Program::fullName(), "Zell iPod/iPhone Transfer");
}

TEST(ProgramTest, HasTheVersionOfTheBuildAndOfThePapersThatComeWithIt)
{
    EXPECT_EQ(Program::version(), ZELL_BUILD_VERSION);

    const auto firstIn = [](const char* name, const char* pattern) {
        QFile file(QStringLiteral(ZELL_PACKAGING "/") + QString::fromLatin1(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
        const QRegularExpression version{QString::fromLatin1(pattern)};
        return version.match(QString::fromUtf8(file.readAll())).captured(1);
    };
    EXPECT_EQ(Program::version(),
              firstIn("io.zell.Transfer.metainfo.xml", "<release version=\"([^\"]+)\""));
    EXPECT_EQ(Program::version(), firstIn("zell-transfer.1", "Transfer ([0-9.]+)\""));
    EXPECT_EQ(Program::version(), firstIn("zell-transfer-cli.1", "Transfer ([0-9.]+)\""));
}
