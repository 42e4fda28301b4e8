#include "Base/Utility.h"

#include "Base/Exception.h"
#include "Base/Program.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTimeZone>
#include <QUuid>

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <limits>
#include <memory>
#include <vector>

namespace
{
std::vector<std::byte> bytes(std::initializer_list<int> values)
{
    std::vector<std::byte> result;
    for (const int value : values)
        result.push_back(std::byte(value));
    return result;
}

/// One row of a real database, stepped to.
class Row
{
public:
    explicit Row(const char* select)
    {
        sqlite3_open(":memory:", &_database);
        EXPECT_EQ(sqlite3_prepare_v2(_database, select, -1, &_statement, nullptr), SQLITE_OK);
        EXPECT_EQ(sqlite3_step(_statement), SQLITE_ROW);
    }
    ~Row()
    {
        sqlite3_finalize(_statement);
        sqlite3_close(_database);
    }
    Row(const Row&) = delete;
    Row& operator=(const Row&) = delete;

    sqlite3_stmt* statement() { return _statement; }

private:
    sqlite3* _database = nullptr;
    sqlite3_stmt* _statement = nullptr;
};

const QDateTime ReferenceDate(QDate(2001, 1, 1), QTime(0, 0), QTimeZone::utc());
} // namespace

TEST(FieldReaders, ReadLittleEndianFields)
{
    EXPECT_EQ(Utility::readUShortFromData(bytes({0x34, 0x12}), 0), 0x1234);
    EXPECT_EQ(Utility::readShortFromData(bytes({0xFF, 0xFF}), 0), -1);
    EXPECT_EQ(Utility::readUCharFromData(bytes({0, 0xFE}), 1), 0xFE);
    EXPECT_EQ(Utility::readCharFromData(bytes({0, 0xFE}), 1), -2);
    EXPECT_EQ(Utility::readUIntFromData(bytes({0xFF, 0xFF, 0xFF, 0xFF}), 0), 4294967295U);
    EXPECT_EQ(Utility::readIntFromData(bytes({0, 0xFE, 0xFF, 0xFF, 0xFF}), 1), -2);
}

TEST(FieldReaders, RaiseInsteadOfReadingInPart)
{
    const auto eight = bytes({1, 2, 3, 4, 5, 6, 7, 8});
    EXPECT_EQ(Utility::readUIntFromData(eight, 4), 0x08070605U);
    try {
        (void)Utility::readUIntFromData(eight, 5);
        FAIL() << "read past the end";
    } catch (const Exception& exception) {
        EXPECT_EQ(exception.name(), "NSRangeException");
    }
}

TEST(FieldReaders, RaiseForOffsetsThatWrapAround)
{
    const auto four = bytes({1, 2, 3, 4});
    constexpr std::size_t Huge = std::numeric_limits<std::size_t>::max();
    EXPECT_THROW((void)Utility::readUCharFromData(four, Huge), Exception);
    EXPECT_THROW((void)Utility::bytesOfData(four, 2, Huge), Exception);
    EXPECT_EQ(Utility::bytesOfData(four, 4, 0).size(), 0U);
}

TEST(ColumnReaders, GiveTextAsUtf8)
{
    Row row("select 'Привет', '', 7");
    EXPECT_EQ(Utility::stringWithStmt(row.statement(), 0), QString::fromUtf8("Привет"));
    EXPECT_EQ(Utility::stringWithStmt(row.statement(), 1), "");
    EXPECT_EQ(Utility::stringWithStmt(row.statement(), 2), "7");
}

TEST(ColumnReaders, GiveAnEmptyTextForNull)
{
    Row row("select null");
    const QString text = Utility::stringWithStmt(row.statement(), 0);
    EXPECT_TRUE(text.isEmpty());
    EXPECT_FALSE(text.isNull());
}

TEST(ColumnReaders, GiveNoTextForBytesThatAreNoUtf8)
{
    Row row("select cast(x'41FF42' as text)");
    EXPECT_TRUE(Utility::stringWithStmt(row.statement(), 0).isNull());
}

TEST(ColumnReaders, CountDatesFromTheYear2001)
{
    Row row("select 0.0, 86400.5, null, 9e99");
    EXPECT_EQ(Utility::dateWithStmt(row.statement(), 0), ReferenceDate);
    EXPECT_EQ(Utility::dateWithStmt(row.statement(), 1), ReferenceDate.addMSecs(86400500));
    EXPECT_EQ(Utility::dateWithStmt(row.statement(), 2), ReferenceDate);
    EXPECT_EQ(Utility::dateWithStmt(row.statement(), 3), ReferenceDate);
}

struct IntervalCase {
    const char* name;
    double seconds;
    const char* text;
};
void PrintTo(const IntervalCase& c, std::ostream* out)
{
    *out << c.name;
}

class IntervalToString : public testing::TestWithParam<IntervalCase>
{
};

TEST_P(IntervalToString, ReadsAs)
{
    EXPECT_EQ(Utility::intervalToString(GetParam().seconds), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    , IntervalToString,
    testing::Values(
        IntervalCase{"Nothing", 0, "00:00"}, IntervalCase{"RoundsATenthUp", 0.1, "00:01"},
        IntervalCase{"RoundsUpToSixtySeconds", 59.2, "00:60"},
        IntervalCase{"RoundsUpFromNearly", 59.9, "00:60"}, IntervalCase{"OverAMinute", 61, "01:01"},
        IntervalCase{"RoundsUpBelowTheHour", 3599.5, "59:60"},
        IntervalCase{"AnHour", 3600, "01:00:00"}, IntervalCase{"OverAnHour", 3661.5, "01:01:02"},
        IntervalCase{"ManyHours", 360000, "100:00:00"},
        IntervalCase{"Infinite", std::numeric_limits<double>::infinity(), "00:00"}),
    [](const auto& c) { return std::string(c.param.name); });

TEST(TempFilePath, IsOnlyANameWithoutSixTrailingX)
{
    const QString path = Utility::getTempFilePath("/F00/ABCD.mp3");
    EXPECT_EQ(path, QDir::tempPath() + "/ABCD.mp3");
    EXPECT_FALSE(QFileInfo::exists(path));
}

TEST(TempFilePath, IsMadeUniqueAndCreatedWithSixTrailingX)
{
    const QString first = Utility::getTempFilePath("/F00/songXXXXXX");
    const QString second = Utility::getTempFilePath("/F00/songXXXXXX");
    EXPECT_NE(first, second);
    for (const QString& path : {first, second}) {
        EXPECT_TRUE(path.startsWith(QDir::tempPath() + "/song"));
        EXPECT_EQ(QFileInfo(path).size(), 0);
        EXPECT_TRUE(QFile::remove(path));
    }
}

TEST(SupportFolders, AreMadeWhenAskedFor)
{
    const QString support = Utility::applicationSupportFolder();
    EXPECT_TRUE(support.endsWith("/" + Program::briefName()));
    EXPECT_TRUE(QFileInfo(support).isDir());
    EXPECT_EQ(Utility::logFolder(), support + "/log");
    EXPECT_TRUE(QFileInfo(support + "/log").isDir());
}

TEST(SupportFolders, LoseTheLogWithAllItHolds)
{
    const QString log = Utility::logFolder();
    ASSERT_TRUE(QDir().mkpath(log + "/deep/deeper"));
    Utility::clearLog();
    EXPECT_FALSE(QFileInfo::exists(log));
    Utility::clearLog(); // nothing there, nothing said
}

TEST(SupportFolders, LoseNothingThroughALinkInPlaceOfTheLog)
{
    const QTemporaryDir person;
    const QString precious = person.filePath("precious");
    QFile file(precious);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QString log = Utility::applicationSupportFolder() + "/log";
    Utility::clearLog();
    ASSERT_TRUE(QFile::link(person.path(), log));
    Utility::clearLog();
    EXPECT_TRUE(QFileInfo::exists(precious));
    EXPECT_TRUE(QFile::remove(log));
}

TEST(CreateFolder, MakesMissingParentsAndSaysWhyItCannot)
{
    const QString base = QDir::tempPath() + "/create-folder";
    EXPECT_EQ(Utility::createFolder(base + "/a/b"), "");
    EXPECT_EQ(Utility::createFolder(base + "/a/b"), "");
    EXPECT_TRUE(QFileInfo(base + "/a/b").isDir());
    QFile file(base + "/file");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(Utility::createFolder(base + "/file/x"), "Not a directory");
    EXPECT_EQ(Utility::createFolder(base + "/" + QString(300, u'n')), "File name too long");
    EXPECT_FALSE(Utility::createFolder(base + "/z" + QChar(QChar::Null) + "z").isEmpty());
    EXPECT_FALSE(QFileInfo::exists(base + "/z"));
}

TEST(Uuid, IsNewEachTimeAndInStandardForm)
{
    const QString uuid = Utility::stringWithUUID();
    EXPECT_NE(uuid, Utility::stringWithUUID());
    EXPECT_EQ(uuid.size(), 36);
    EXPECT_EQ(uuid, uuid.toUpper());
    EXPECT_FALSE(QUuid::fromString(uuid).isNull());
}
