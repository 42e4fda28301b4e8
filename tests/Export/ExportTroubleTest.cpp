// What goes wrong during an export, and whether the report can be trusted about it.

#include "Device/BookDb.h"
#include "support/BookCatalogue.h"
#include "support/FolderDevice.h"
#include "support/PlayerFixture.h"
#include "support/PrivateMounts.h"

namespace
{
constexpr qsizetype Chunk = 1024 * 1024;

class ExportTrouble : public PlayerFixture
{
};

/// Books that are folders, on a device that copies folders.
class FolderItem : public PlayerFixture
{
protected:
    FolderItem()
    {
        Files::write(path("phone/Books/Notes.epub/mimetype"), "application/epub+zip");
        Files::write(path("phone/Books/Notes.epub/OEBPS/one.xhtml"), "<html/>");
        book.title = "Notes";
        book.artist = "R. Alder";
        book.album = "Notes";
        book.type = BookTrack;
        book.path = "/Books/Notes.epub";
    }

    void exportBook()
    {
        std::vector<Track*> books = {&book};
        ExportJob(phone, config, host, report, host.toStop).exportTracks(books);
    }
    QString packed() const { return out("Books/R. Alder/Notes/Notes.epub"); }

    std::shared_ptr<FolderDevice> phone = std::make_shared<FolderDevice>(path("phone"));
    Track book;
};
} // namespace

TEST_F(ExportTrouble, ReportsAMissingFileAndGoesOn)
{
    QFile::remove(onDevice(add("Gone", "x")));
    add("Two", "second");
    exportTracks();
    EXPECT_EQ(results(), QStringList({"missing", "copied"}));
    EXPECT_EQ(item(0).why, "No such file or directory");
    EXPECT_EQ(item(0).bytes, 0);
    EXPECT_FALSE(QFileInfo::exists(item(0).to));
    EXPECT_EQ(host.told.last(), "finished!");
}

TEST_F(ExportTrouble, ReportsATrackWithoutAFileOfItsOwn)
{
    add("Null", "x").location = QString();
    add("Root", "x").location = "";
    add("Control", "x").location = ":iPod_Control";
    add("Folder", "x").location = ":iPod_Control:Music:F00";
    add("Slash", "x").location = ":";
    exportTracks();
    EXPECT_EQ(results(), QStringList({"missing", "missing", "missing", "missing", "missing"}));
    EXPECT_TRUE(item(0).from.isNull());
    EXPECT_TRUE(QDir(out("Music/Artist/Album")).isEmpty());
}

TEST_F(ExportTrouble, ReportsACopyThatLostBytes)
{
    const QString file = onDevice(add("Shrinks", Files::content(3 * Chunk)));
    add("Two", "second");
    connect();
    host.onChunk = [&](int chunk) { return chunk != 2 || QFile::resize(file, Chunk); };
    exportTracks();
    EXPECT_EQ(results(), QStringList({"incomplete", "copied"}));
    EXPECT_EQ(item(0).bytes, Chunk);
    EXPECT_EQ(item(0).why, "1048576 of 3145728 bytes were copied");
}

TEST_F(ExportTrouble, ReportsAFullDisk)
{
    PrivateMounts::enter();
    const auto disk = PrivateMounts::Mount::memory(out("Music"), 2 * Chunk);
    add("Small", "first");
    add("Large", Files::content(4 * Chunk));
    add("Also Small", "third");
    exportTracks();
    EXPECT_EQ(results(), QStringList({"copied", "failed", "failed"}));
    EXPECT_EQ(item(1).why, "No space left on device");
    EXPECT_EQ(host.told.last(), "finished!");
}

TEST_F(ExportTrouble, ReportsAFolderThatCannotBeWritten)
{
    PrivateMounts::enter();
    QDir().mkpath(path("locked"));
    const auto locked = PrivateMounts::Mount::readOnlyBind(path("locked"), out("Music"));
    add("One", "first");
    exportTracks();
    EXPECT_EQ(results(), QStringList("failed"));
    EXPECT_EQ(item(0).why, "Read-only file system");
}

TEST_F(ExportTrouble, ReportsAFileInPlaceOfAFolder)
{
    Files::write(out("Music/Artist"), "a file");
    add("One", "first");
    exportTracks();
    EXPECT_EQ(results(), QStringList("failed"));
    EXPECT_EQ(item(0).why, "Not a directory");
}

TEST_F(ExportTrouble, ReportsANameTooLongForTheFileSystem)
{
    add(QString(300, u'n'), "first");
    add("Two", "second").artist = QString(300, u'a');
    add("Three", "third");
    exportTracks();
    EXPECT_EQ(results(), QStringList({"failed", "failed", "copied"}));
    EXPECT_EQ(item(0).why, "File name too long");
    EXPECT_EQ(item(1).why, "File name too long");
}

TEST_F(ExportTrouble, RefusesANameThatLeadsOut)
{
    add("../../../../escaped", "first");
    add("One", "first").artist = "../../escaped";
    exportTracks();
    EXPECT_EQ(results(), QStringList({"failed", "failed"}));
    EXPECT_FALSE(QFileInfo::exists(path("escaped.mp3")));
    EXPECT_FALSE(QFileInfo::exists(path("escaped")));
    EXPECT_TRUE(item(0).to.isNull());
}

TEST_F(ExportTrouble, RefusesANameWithAZero)
{
    add(QString("One") + QChar(QChar::Null) + "Two", "first");
    exportTracks();
    EXPECT_EQ(results(), QStringList("failed"));
    EXPECT_FALSE(QFileInfo::exists(out("Music/Artist/Album/One")));
}

TEST_F(ExportTrouble, WritesNothingToTheDeviceItself)
{
    add("One", "first");
    config.setFolderPath(Section::Music, path("player/iPod_Control/Out/Music"));
    exportTracks();
    EXPECT_EQ(results(), QStringList("failed"));
    EXPECT_FALSE(QFileInfo::exists(path("player/iPod_Control/Out")));
}

TEST_F(ExportTrouble, WritesNothingToTheDeviceThroughALink)
{
    add("One", "first");
    QDir().mkpath(path("out"));
    ASSERT_TRUE(QFile::link(path("player"), out("link")));
    config.setFolderPath(Section::Music, out("link/Music"));
    exportTracks();
    EXPECT_EQ(results(), QStringList("failed"));
    EXPECT_FALSE(QFileInfo::exists(path("player/Music")));
}

TEST_F(ExportTrouble, LeavesAFolderAloneThatStandsInTheWay)
{
    add("One", "first");
    Files::write(out("Music/Artist/Album/One.mp3/precious"), "mine");
    config.setCopyRule(OverwriteRule);
    exportTracks();
    EXPECT_EQ(results(), QStringList("failed"));
    EXPECT_EQ(Files::read(out("Music/Artist/Album/One.mp3/precious")), "mine");
}

TEST_F(ExportTrouble, KeepsAnOldFileWhenTheNewOneIsMissing)
{
    QFile::remove(onDevice(add("One", "x")));
    Files::write(out("Music/Artist/Album/One.mp3"), "old");
    config.setCopyRule(OverwriteRule);
    exportTracks();
    EXPECT_EQ(results(), QStringList("missing"));
    EXPECT_EQ(Files::read(out("Music/Artist/Album/One.mp3")), "old");
}

TEST_F(FolderItem, ArrivesAsOneArchiveOfItsOwnName)
{
    exportBook();
    EXPECT_EQ(results(), QStringList("copied"));
    ASSERT_TRUE(QFileInfo(packed()).isFile());
    EXPECT_FALSE(QFileInfo::exists(packed() + ".zip"));
    EXPECT_TRUE(Files::read(packed()).contains("mimetypeapplication/epub+zip"));
    EXPECT_EQ(item(0).bytes, 27);
}

TEST_F(FolderItem, OfACatalogueArrivesAsOneArchiveOfItsOwnName)
{
    const auto list = [](const QString& name) {
        return BookCatalogue::write({{{{"Name", name},
                                       {"Artist", "R. Alder"},
                                       {"Album", "Notes"},
                                       {"Path", name + ".epub"}}}});
    };
    Files::write(path("phone/Books/Books.plist"), list("Notes"));
    Files::write(path("phone/Books/Purchases/Purchases.plist"), list("Bought"));
    Files::write(path("phone/Books/Purchases/Bought.epub/mimetype"), "application/epub+zip");
    ASSERT_NE(phone->bookDb(), nullptr);
    ExportJob(phone, config, host, report, host.toStop).exportTracks(phone->bookDb()->bookList());
    EXPECT_EQ(results(), QStringList({"copied", "copied"}));
    const QString bought = out("Books/R. Alder/Notes/Bought.epub");
    EXPECT_EQ(item(0).to, packed());
    EXPECT_EQ(item(1).to, bought);
    for (const QString& file : {packed(), bought}) {
        EXPECT_TRUE(QFileInfo(file).isFile()) << qPrintable(file);
        EXPECT_TRUE(Files::read(file).contains("mimetypeapplication/epub+zip"));
    }
    EXPECT_EQ(QDir(out("Books/R. Alder/Notes")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList({"Bought.epub", "Notes.epub"}));
}

TEST_F(FolderItem, IsNotPackedIntoAFolderOfThePersons)
{
    Files::write(packed() + "/precious", "mine");
    config.setCopyRule(OverwriteRule);
    exportBook();
    EXPECT_NE(results(), QStringList("copied"));
    EXPECT_EQ(Files::read(packed() + "/precious"), "mine");
}

TEST_F(FolderItem, DoesNotTouchAnArchiveOfThePersons)
{
    Files::write(packed() + ".zip", "mine");
    exportBook();
    EXPECT_EQ(results(), QStringList("copied"));
    EXPECT_EQ(Files::read(packed() + ".zip"), "mine");
    EXPECT_TRUE(QFileInfo(packed()).isFile());
}

TEST_F(FolderItem, IsReportedWhenAFileOfItWasLost)
{
    phone->lost = QStringList("one.xhtml");
    exportBook();
    EXPECT_EQ(results(), QStringList("incomplete"));
    EXPECT_TRUE(item(0).why.contains("one.xhtml"));
    EXPECT_TRUE(QFileInfo(packed()).isFile());
}

TEST_F(FolderItem, IsNoLibraryFolder)
{
    for (const char* folder : {"/", "", "/Books", "/Books/", "/iTunes_Control"}) {
        book.path = QString::fromLatin1(folder);
        exportBook();
    }
    EXPECT_EQ(results().count("missing"), 5);
}
