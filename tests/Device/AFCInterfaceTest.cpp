#include "Base/Exception.h"
#include "support/phone/ConnectedPhone.h"

#include <gtest/gtest.h>

#include <limits>

namespace
{
using AFCInterfaceOnAPhone = ConnectedPhone;

QStringList logged;
void keepLog(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& text)
{
    logged.append(text);
}
} // namespace

TEST_F(AFCInterfaceOnAPhone, KeepsTheLastValueOfAKeyAndNoKeyWithoutOne)
{
    AFCList list({"a", "1", "b", "2", "a", "3", "c"});
    EXPECT_EQ(AFCInterface::createDictionaryForAFCDictionary(list),
              (AFCInterface::Attributes{{"a", "3"}, {"b", "2"}}));
}

TEST_F(AFCInterfaceOnAPhone, HasNoAttributesOnceTheConnectionIsGone)
{
    usb.cutConnections(phone);
    EXPECT_EQ(files().getDeviceAttributes(), std::nullopt);
    EXPECT_EQ(files().getAttributesAtPath("/"), std::nullopt);
    EXPECT_FALSE(files().isDirectoryAtPath("/"));
}

TEST_F(AFCInterfaceOnAPhone, TellsFilesFromFolders)
{
    Files::write(onPhone("/a.txt"), "12345");
    EXPECT_TRUE(files().isFileAtPath("/a.txt"));
    EXPECT_FALSE(files().isDirectoryAtPath("/a.txt"));
    EXPECT_FALSE(files().isFileAtPath("/iTunes_Control"));
    EXPECT_TRUE(files().isDirectoryAtPath("/iTunes_Control"));
    EXPECT_FALSE(files().isFileAtPath("/missing"));
    EXPECT_FALSE(files().isDirectoryAtPath("/missing"));
    EXPECT_EQ(files().getAttributesAtPath("/missing"), std::nullopt);
    EXPECT_EQ(files().getAttributesAtPath("/a.txt")->value("st_size"), "5");
    EXPECT_EQ(files().getDeviceAttributes()->value("FSBlockSize"), "4096");
}

TEST_F(AFCInterfaceOnAPhone, TakesASymbolicLinkForAFolderWhateverItPointsTo)
{
    Files::write(onPhone("/a.txt"), "a");
    QFile::link(onPhone("/a.txt"), onPhone("/toFile"));
    QFile::link(onPhone("/nowhere"), onPhone("/toNothing"));
    for (const char* link : {"/toFile", "/toNothing"}) {
        EXPECT_TRUE(files().isDirectoryAtPath(link));
        EXPECT_FALSE(files().isFileAtPath(link));
    }
}

TEST_F(AFCInterfaceOnAPhone, ListsAllNamesOfAFolderWithTheDots)
{
    Files::write(onPhone("/F/b"), "");
    Files::write(onPhone("/F/a"), "");
    QStringList names = files().listFilesInPath("/F");
    names.sort();
    EXPECT_EQ(names, (QStringList{".", "..", "a", "b"}));
}

TEST_F(AFCInterfaceOnAPhone, ListsNamesInThePhonesOrder)
{
    change([](PhoneFaults& faults) { faults.extraNames["/"] = {"z", "a", "m", "a"}; });
    EXPECT_EQ(files().listFilesInPath("/").mid(3), (QStringList{"z", "a", "m", "a"}));
}

TEST_F(AFCInterfaceOnAPhone, ThrowsWithoutNameAndReasonForAFolderThatCannotBeOpened)
{
    try {
        files().listFilesInPath("/missing");
        FAIL();
    } catch (const Exception& exception) {
        EXPECT_TRUE(exception.name().isEmpty());
        EXPECT_TRUE(exception.reason().isEmpty());
    }
}

TEST_F(AFCInterfaceOnAPhone, ReadsNothingAtTheEndOfAFile)
{
    Files::write(onPhone("/a"), "12345");
    const quint64 file = files().openFileAtPath("/a", 2);
    ASSERT_NE(file, 0U);
    quint32 size = 3;
    EXPECT_EQ(files().readFromFile(file, size, 3), "45");
    EXPECT_EQ(size, 2U);
    const QByteArray end = files().readFromFile(file, size, 5);
    EXPECT_FALSE(end.isNull());
    EXPECT_TRUE(end.isEmpty());
    EXPECT_EQ(size, 0U);
    EXPECT_TRUE(files().closeFile(file));
    EXPECT_FALSE(files().closeFile(file));
}

TEST_F(AFCInterfaceOnAPhone, LeavesTheSizeAloneWhenAReadFails)
{
    Files::write(onPhone("/a"), "12345");
    change([](PhoneFaults& faults) { faults.badRange = PhoneFaults::BadRange{"/a", 0, 5}; });
    const quint64 file = files().openFileAtPath("/a", 2);
    quint32 size = 3;
    qInstallMessageHandler(keepLog);
    EXPECT_TRUE(files().readFromFile(file, size, 0).isNull());
    EXPECT_TRUE(files().readFromFile(file + 7, size, 0).isNull());
    qInstallMessageHandler(nullptr);
    EXPECT_EQ(size, 3U);
    EXPECT_EQ(logged, QStringList{"ret: 4"}); // a failed seek is not worth a line
}

TEST_F(AFCInterfaceOnAPhone, LogsWhatCannotBeOpened)
{
    logged.clear();
    qInstallMessageHandler(keepLog);
    EXPECT_EQ(files().openFileAtPath("/missing", 2), 0U);
    EXPECT_EQ(files().openFileAtPath(QString("/a") + QChar(0) + "b", 2), 0U);
    qInstallMessageHandler(nullptr);
    EXPECT_EQ(logged, (QStringList{"AFCFileRefOpen(2): 8", "AFCFileRefOpen(2): 7"}));
}

TEST_F(AFCInterfaceOnAPhone, WidensANegativeModeWithItsSign)
{
    // The low bits alone would create the file.
    constexpr qint32 Mode = std::numeric_limits<qint32>::min() + 3;
    logged.clear();
    qInstallMessageHandler(keepLog);
    EXPECT_EQ(files().openFileAtPath("/new", Mode), 0U);
    EXPECT_EQ(files().openFileAtPath("/new", -1), 0U);
    qInstallMessageHandler(nullptr);
    EXPECT_EQ(logged, (QStringList{"AFCFileRefOpen(-2147483645): 7", "AFCFileRefOpen(-1): 7"}));
    EXPECT_EQ(phone->operations(), 0);
    // Nor does the connection take what a mode becomes that is widened without.
    quint64 handle = 0;
    EXPECT_EQ(files().connection().fileRefOpen("/new", qint64(quint32(Mode)), handle), 7);
}

TEST_F(AFCInterfaceOnAPhone, WritesNothingForANullArrayAndSaysYes)
{
    Files::write(onPhone("/a"), "12345");
    EXPECT_TRUE(files().writeToFile(99, QByteArray(), 0));
    EXPECT_EQ(phone->operations(), 0);
    EXPECT_FALSE(files().writeToFile(99, "x", 0));
}

TEST_F(AFCInterfaceOnAPhone, CompletesTheInterfaceWithWriting)
{
    phone->expectWrites();
    const quint64 file = files().openFileAtPath("/new", 3);
    ASSERT_NE(file, 0U);
    EXPECT_TRUE(files().writeToFile(file, "hello world", 0));
    EXPECT_TRUE(files().writeToFile(file, "W", 6));
    EXPECT_TRUE(files().closeFile(file));
    EXPECT_EQ(Files::read(onPhone("/new")), "hello World");
    const quint64 readOnly = files().openFileAtPath("/new", 2);
    EXPECT_FALSE(files().writeToFile(readOnly, "x", 0));
    EXPECT_TRUE(files().renamePath("/new", "/newer"));
    EXPECT_FALSE(files().renamePath("/new", "/newer"));
    EXPECT_TRUE(files().setSizeOfFile("/newer", 5));
    EXPECT_EQ(QFileInfo(onPhone("/newer")).size(), 5);
    EXPECT_TRUE(files().createDirectory("/folder"));
    EXPECT_FALSE(files().createDirectory("/folder"));
    EXPECT_TRUE(files().removePath("/folder"));
    EXPECT_FALSE(files().removePath("/folder"));
    EXPECT_FALSE(files().setSizeOfFile("/missing/x", 5));
}
