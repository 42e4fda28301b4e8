// What goes wrong during an export, and whether the report can be trusted about it.

#include "Device/BookDb.h"
#include "support/BookCatalogue.h"
#include "support/FolderDevice.h"
#include "support/PlayerFixture.h"
#include "support/PrivateMounts.h"
#include "support/SickVolume.h"

#include <QSet>

#include <thread>

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

TEST_F(ExportTrouble, EndsANameAtAZero)
{
    add(QString("One") + QChar(QChar::Null) + "Two", "first");
    exportTracks();
    EXPECT_EQ(results(), QStringList("copied"));
    EXPECT_EQ(Files::read(out("Music/Artist/Album/One.mp3")), "first");
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

TEST_F(ExportTrouble, FollowsNoLinkOnTheDevice)
{
    const QString file = onDevice(add("Key", "x"));
    Files::write(path("private"), "not on the device");
    ASSERT_TRUE(QFile::remove(file) && QFile::link(path("private"), file));
    add("Two", "second");
    exportTracks();
    EXPECT_EQ(results(), QStringList({"failed", "copied"}));
    EXPECT_TRUE(item(0).why.contains("is a link, and links on a device are not followed"));
    EXPECT_FALSE(QFileInfo::exists(item(0).to));
}

TEST_F(ExportTrouble, WritesThroughNoLinkThatHasTheName)
{
    add("One", "first");
    Files::write(path("precious"), "mine");
    const QString one = out("Music/Artist/Album/One.mp3");
    QDir().mkpath(out("Music/Artist/Album"));
    ASSERT_TRUE(QFile::link(path("precious"), one));
    for (const int rule : {SkipRule, KeepBothRule, OverwriteRule}) {
        config.setCopyRule(rule);
        exportTracks();
        EXPECT_EQ(Files::read(path("precious")), "mine");
        EXPECT_EQ(QFileInfo(one).isSymLink(), rule != OverwriteRule);
    }
    EXPECT_EQ(results(), QStringList({"skipped", "copied", "copied"}));
    EXPECT_EQ(Files::read(out("Music/Artist/Album/One1.mp3")), "first");
    EXPECT_EQ(Files::read(one), "first");
}

TEST_F(ExportTrouble, FollowsNoLinkBelowTheDestination)
{
    add("One", "first");
    QDir().mkpath(out("Music"));
    QDir().mkpath(path("elsewhere"));
    ASSERT_TRUE(QFile::link(path("elsewhere"), out("Music/Artist")));
    exportTracks();
    EXPECT_EQ(results(), QStringList("failed"));
    EXPECT_TRUE(item(0).why.contains("link"));
    EXPECT_TRUE(QDir(path("elsewhere")).isEmpty());
}

TEST_F(ExportTrouble, WritesWhereALinkOfThePersonsLeads)
{
    add("One", "first");
    QDir().mkpath(path("disk"));
    QDir().mkpath(path("out"));
    ASSERT_TRUE(QFile::link(path("disk"), out("Music")));
    exportTracks();
    EXPECT_EQ(results(), QStringList("copied"));
    EXPECT_EQ(Files::read(path("disk/Artist/Album/One.mp3")), "first");
    EXPECT_EQ(item(0).to, out("Music/Artist/Album/One.mp3")) << "as the person knows it";
}

TEST_F(ExportTrouble, ReportsACopyThatGrewAsIncomplete)
{
    const QString file = onDevice(add("Grows", Files::content(Chunk)));
    connect();
    host.onChunk = [&](int /*chunk*/) { return QFile::resize(file, 5 * Chunk); };
    host.handsOver = true;
    exportTracks();
    EXPECT_EQ(results(), QStringList("incomplete"));
    EXPECT_TRUE(host.handedOver.isEmpty())
        << "it may be exported again, and would stand there twice";
    EXPECT_EQ(item(0).bytes, Chunk);
}

TEST_F(ExportTrouble, TakesAnotherNameWhenItsOwnIsTakenMeanwhile)
{
    Files::write(path("phone/One.mp3"), "first");
    const auto phone = std::make_shared<FolderDevice>(path("phone"));
    Track track;
    track.title = "One";
    track.path = "/One.mp3";
    const QString folder = out("Music/Unknown Artist/Unknown Album/");
    // Another export takes the name between the look at it and the copy.
    class TakenDevice final : public Device
    {
    public:
        TakenDevice(FolderDevice& phone, const QString& rival)
            : _phone(phone)
            , _rival(rival)
        {
        }
        ~TakenDevice() override { releaseReaders(); }
        Expected<FileInfo> info(const QString& path) override { return _phone.info(path); }
        CopyResult copyOutNew(const QString& from, const QString& to,
                              std::optional<int> progress) override
        {
            if (!QFileInfo::exists(_rival))
                Files::write(_rival, "of another export");
            return _phone.copyOutNew(from, to, progress);
        }

    private:
        FolderDevice& _phone;
        QString _rival;
    };
    const auto taken = std::make_shared<TakenDevice>(*phone, folder + "One.mp3");
    ExportJob(taken, config, host, report, host.toStop).exportTracks({&track});
    EXPECT_EQ(results(), QStringList("copied"));
    EXPECT_EQ(item(0).to, folder + "One1.mp3");
    EXPECT_EQ(Files::read(folder + "One.mp3"), "of another export");
    EXPECT_EQ(Files::read(folder + "One1.mp3"), "first");
}

TEST_F(ExportTrouble, MixesNothingWhenTwoExportsWriteIntoOneFolder)
{
    for (int i = 0; i < 20; ++i)
        add(QString("Song %1").arg(i % 5), QByteArray(300'000 + i, char('a' + i)));
    const std::vector<Track*> tracks = connect().trackDb()->tracks();
    ExportReport other;
    Config otherConfig = config;
    ScriptedHost otherHost;
    Device::setDelegate(nullptr); // which both would share
    std::thread rival([&] {
        ExportJob(device, otherConfig, otherHost, other, otherHost.toStop).exportTracks(tracks);
    });
    ExportJob(device, config, host, report, host.toStop).exportTracks(tracks);
    rival.join();
    QSet<QString> paths;
    for (const ExportReport* account : {&report, &other}) {
        for (std::size_t i = 0; i < tracks.size(); ++i) {
            const ExportItem& one = account->items().at(i);
            EXPECT_EQ(one.result, ExportItem::Result::Copied);
            EXPECT_EQ(Files::read(one.to), QByteArray(300'000 + int(i), char('a' + i)));
            paths.insert(one.to);
        }
    }
    EXPECT_EQ(paths.size(), 40) << "each has a file of its own";
}

namespace
{
/// An export from a mounted player that goes away.
class LostPlayer : private PrivateMounts::Place, public PlayerFixture
{
protected:
    /// Writes the library to a folder, and shows it as a volume.
    void mount()
    {
        Files::write(path("player/iPod_Control/iTunes/iTunesDB"), ITunesDbWriter::write(library));
        volume = PrivateMounts::Mount::bind(path("player"), path("mount"));
        device = std::make_shared<iPodDevice>(path("mount"));
        (void)device->trackDb()->tracks();
        host.chunks.clear();
    }

    std::unique_ptr<PrivateMounts::Mount> volume;
};
} // namespace

TEST_F(LostPlayer, EndsTheJobAndIsNotCalledMissing)
{
    for (const char* title : {"One", "Two", "Three", "Four"})
        add(QString::fromLatin1(title), "x");
    mount();
    host.onItem = [this](int index) {
        if (index == 1)
            volume->unmount();
    };
    exportTracks();
    EXPECT_EQ(results(), QStringList({"copied", "failed", "failed", "failed"}));
    for (const std::size_t i : {1, 2, 3}) {
        EXPECT_EQ(item(i).why, "The device was disconnected");
        EXPECT_TRUE(item(i).title.size() > 0);
    }
    EXPECT_EQ(host.told.count("Export Three... at 2"), 0) << "nothing more is tried";
    EXPECT_EQ(host.told.last(), "finished!");
}

TEST_F(LostPlayer, LeavesItsLastCopyIncomplete)
{
    add("One", Files::content(3 * Chunk));
    add("Two", "second");
    mount();
    host.onChunk = [this](int chunk) {
        if (chunk == 2)
            volume->unmount();
        return true;
    };
    exportTracks();
    EXPECT_EQ(results(), QStringList({"incomplete", "failed"}));
    EXPECT_TRUE(item(0).why.contains("The device was disconnected"));
    EXPECT_EQ(item(1).why, "The device was disconnected");
}

TEST_F(LostPlayer, IsNobodysStopWhereItsDepartureEndsTheCopy)
{
    add("One", Files::content(3 * Chunk));
    add("Two", "second");
    mount();
    host.onChunk = [this](int chunk) {
        if (chunk < 2)
            return true;
        volume->unmount();
        return bool(device->info(device->controlPath())); // it notices, as a window does
    };
    exportTracks();
    EXPECT_EQ(results(), QStringList({"incomplete", "failed"}));
    EXPECT_EQ(item(0).why, "The device was disconnected");
    EXPECT_EQ(item(1).why, "The device was disconnected");
    EXPECT_EQ(host.told.last(), "finished!");
}

TEST_F(LostPlayer, IsNoticedByEachCallThatFails)
{
    add("One", "first");
    add("Two", "second");
    Files::write(path("player/iPod_Control/iTunes/iTunesDB"), ITunesDbWriter::write(library));
    SickVolume sick(path("player"), path("sick"));
    device = std::make_shared<iPodDevice>(path("sick"));
    (void)device->trackDb()->tracks();
    sick.die();
    exportTracks(device->trackDb()->tracks());
    EXPECT_EQ(results(), QStringList({"failed", "failed"}));
    EXPECT_EQ(item(0).why, "The device was disconnected");
}

TEST_F(LostPlayer, IsAccountedForWhereverItFails)
{
    add("One", Files::content(Chunk + 5));
    add("Two", "second");
    add("Three", "third");
    Files::write(path("player/iPod_Control/iTunes/iTunesDB"), ITunesDbWriter::write(library));
    const QHash<QString, QByteArray> contents = {
        {"One", Files::content(Chunk + 5)}, {"Two", "second"}, {"Three", "third"}};
    for (const int error : {EIO, ENODEV}) {
        bool failed = true;
        for (int questions = 0; failed; ++questions) {
            SickVolume sick(path("player"), path("sick"));
            device = std::make_shared<iPodDevice>(path("sick"));
            const std::vector<Track*> tracks = device->trackDb()->tracks();
            QDir(path("out")).removeRecursively();
            ExportReport account;
            sick.failAfter(questions, error);
            ExportJob(device, config, host, account, host.toStop).exportTracks(tracks);
            ASSERT_EQ(account.items().size(), 3U) << questions;
            for (const ExportItem& one : account.items()) {
                EXPECT_NE(one.result, ExportItem::Result::Missing) << questions;
                EXPECT_EQ(one.result == ExportItem::Result::Copied, one.why.isNull());
                if (one.result == ExportItem::Result::Copied) {
                    EXPECT_EQ(Files::read(one.to), contents[one.title]) << questions;
                }
            }
            failed = account.notCopiedCount() > 0;
        }
    }
}

TEST_F(LostPlayer, GoesOnAfterABadBlock)
{
    add("One", Files::content(Chunk));
    add("Two", "second");
    Files::write(path("player/iPod_Control/iTunes/iTunesDB"), ITunesDbWriter::write(library));
    SickVolume sick(path("player"), path("sick"));
    sick.failReads("iPod_Control/Music/F00/1.mp3", EIO, 100);
    device = std::make_shared<iPodDevice>(path("sick"));
    exportTracks(device->trackDb()->tracks());
    EXPECT_EQ(results(), QStringList({"incomplete", "copied"}));
    EXPECT_EQ(item(0).why, "Input/output error");
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

TEST_F(FolderItem, NeedsNoExtension)
{
    ASSERT_TRUE(QFile::rename(path("phone/Books/Notes.epub"), path("phone/Books/Notes")));
    book.path = "/Books/Notes";
    exportBook();
    EXPECT_EQ(results(), QStringList("copied"));
    EXPECT_TRUE(QFileInfo(item(0).to).isFile());
    for (const char* folder : {"/Books/Purchases", "/DCIM", "/iTunes_Control/Music/F00"}) {
        QDir().mkpath(path("phone" + QString::fromLatin1(folder)));
        book.path = QString::fromLatin1(folder);
        exportBook();
    }
    EXPECT_EQ(results(), QStringList({"copied", "missing", "missing", "missing"}));
}

TEST_F(FolderItem, LeavesNothingBehindWhenItIsStopped)
{
    phone->ending = CopyResult{CopyResult::End::Stopped, {}};
    exportBook();
    EXPECT_EQ(results(), QStringList("stopped"));
    EXPECT_TRUE(QDir(out("Books/R. Alder/Notes")).isEmpty());
    EXPECT_EQ(item(0).bytes, 0);
}

TEST_F(FolderItem, LeavesNothingBehindWhenItIsEmpty)
{
    ASSERT_TRUE(QDir(path("phone/Books/Notes.epub")).removeRecursively());
    QDir().mkpath(path("phone/Books/Notes.epub"));
    host.handsOver = true;
    exportBook();
    EXPECT_EQ(results(), QStringList("failed"));
    EXPECT_EQ(item(0).why, "This is an empty folder on the device");
    EXPECT_TRUE(QDir(out("Books/R. Alder/Notes")).isEmpty());
    EXPECT_TRUE(host.handedOver.isEmpty());
}

TEST_F(FolderItem, IsNotHandedOverWhenItIsIncomplete)
{
    host.handsOver = true;
    phone->lost = QStringList("one.xhtml");
    exportBook();
    EXPECT_EQ(results(), QStringList("incomplete"));
    EXPECT_TRUE(host.handedOver.isEmpty());
}

TEST_F(FolderItem, IsNotHandedOverWhenItCannotBePacked)
{
    PrivateMounts::enter();
    // There is room for the folder, and none for the archive beside it.
    const auto disk = PrivateMounts::Mount::memory(out("Books"), 24 * 4096);
    QByteArray noise(16 * 4096, Qt::Uninitialized);
    quint32 state = 1;
    for (char& byte : noise)
        byte = char((state = state * 1664525 + 1013904223) >> 24);
    Files::write(path("phone/Books/Notes.epub/picture"), noise);
    host.handsOver = true;
    exportBook();
    EXPECT_EQ(results(), QStringList("failed"));
    EXPECT_FALSE(item(0).why.isEmpty());
    EXPECT_TRUE(host.handedOver.isEmpty());
    EXPECT_EQ(Files::read(packed() + "/picture"), noise) << "what was copied stays";
    EXPECT_FALSE(QFileInfo::exists(packed() + ".zip"));
}
