// Each command that exports, from its menu to the files it leaves, with a phone that holds some of
// everything.

#include "Device/Album.h"
#include "Device/Photo.h"
#include "Device/PhotoDb.h"
#include "Device/Playlist.h"
#include "Device/SectionItems.h"
#include "support/SamplePhone.h"
#include "support/WindowFixture.h"
#include "support/phone/SimulatedUsb.h"

#include <QAction>
#include <QDir>

namespace
{
class ExportCommandsTest : public WindowFixture
{
protected:
    ExportCommandsTest()
        : usb(path("usb"))
    {
        qputenv("USBMUXD_SOCKET_ADDRESS", usb.address());
    }

    void openOnSamplePhone()
    {
        Config::instance().setCopyRule(KeepBothRule); // several songs have one name
        ASSERT_EQ(SamplePhone::write(path("phone")), "");
        SimulatedPhone::Identity identity;
        identity.identifier = "phone";
        identity.root = path("phone");
        usb.attach(std::make_shared<SimulatedPhone>(identity));
        open();
        ASSERT_TRUE(waitUntil([this] { return !titles().isEmpty(); }));
    }
    Device& device() { return *window().devices().currentDevice(); }
    SectionItems items(Section section) { return SectionItems::of(device(), section).value(); }

    enum class Asks { Mode, Nothing };
    /// Chooses the command in its menu, and waits for the end of the export.
    void run(Command command, Asks asks)
    {
        QDir(out({})).removeRecursively();
        ASSERT_TRUE(waitUntil([&] { return controller->menu().action(command)->isEnabled(); }));
        waitForKeyboard();
        controller->menu().action(command)->trigger();
        if (asks == Asks::Mode)
            confirmExportMode();
        EXPECT_EQ(closeAlert(), "Export finished!");
        ASSERT_TRUE(waitUntil([this] { return !controller->jobs().isBusy(); }));
    }
    /// The last export was of exactly these files of the phone, and each arrived as it is there.
    void expectExported(const QStringList& expected)
    {
        QStringList from;
        for (const ExportItem& item : controller->jobs().report()->items()) {
            from.append(item.from);
            expectArrived(item);
        }
        EXPECT_EQ(from, expected);
    }
    void expectArrived(const ExportItem& item)
    {
        if (!device().isFile(item.from)) {
            // A book that is a folder becomes an archive. Of the last synced photo the phone keeps
            // a preview alone.
            const bool isFolder = device().isDirectory(item.from);
            EXPECT_EQ(item.result == ExportItem::Result::Copied, isFolder)
                << item.from.toStdString();
            EXPECT_EQ(QFile::exists(item.to), isFolder);
            return;
        }
        EXPECT_EQ(item.result, ExportItem::Result::Copied) << item.why.toStdString();
        EXPECT_FALSE(item.to.isEmpty());
        EXPECT_EQ(Files::read(item.to), device().read(item.from)) << item.to.toStdString();
    }

    static QStringList filesOf(const std::vector<Track*>& tracks)
    {
        QStringList files;
        for (const Track* track : tracks)
            files.append(track->path);
        return files;
    }
    static QStringList filesOf(const std::vector<Photo*>& photos)
    {
        QStringList files;
        for (const Photo* photo : photos)
            files.append(photo->fullSizeFile);
        return files;
    }
    static QStringList filesOf(const SectionItems& part)
    {
        QStringList files = filesOf(part.tracks) + filesOf(part.photos);
        for (const Playlist* playlist : part.playlists)
            files += filesOf(playlist->tracks);
        return files;
    }

    SimulatedUsb usb;
};
} // namespace

TEST_F(ExportCommandsTest, EachSectionIsExportedWhole)
{
    openOnSamplePhone();
    for (const SectionFacts& one : Sections::all()) {
        SCOPED_TRACE(one.key);
        const SectionItems expected = items(one.section);
        ASSERT_GT(expected.count(), 0U);
        run(exportAllOf(one.section), expected.photos.empty() ? Asks::Mode : Asks::Nothing);
        expectExported(filesOf(expected));
    }
}

TEST_F(ExportCommandsTest, AllMediaAreTheMediaLibrary)
{
    openOnSamplePhone();
    run(Command::exportAllMedia, Asks::Mode);
    expectExported(filesOf(SectionItems::media(device())));
}

TEST_F(ExportCommandsTest, EverythingIsOneExportOfAllThatThePhoneHolds)
{
    openOnSamplePhone();
    QStringList expected;
    for (const SectionItems& part : SectionItems::everything(device()))
        expected += filesOf(part);
    for (const Section section : {Section::VoiceMemos, Section::CameraRoll, Section::Photos})
        EXPECT_TRUE(expected.contains(filesOf(items(section)).first()));
    run(Command::exportEverything, Asks::Mode);
    expectExported(expected);
}

TEST_F(ExportCommandsTest, WhatIsCheckedOrSelectedIsExported)
{
    openOnSamplePhone();
    controller->perform(Command::checkAll);
    run(Command::exportCheckedTracks, Asks::Mode);
    expectExported(filesOf(window().tracks().tracks()));

    choose("Camera Roll");
    ASSERT_TRUE(waitUntil([this] { return !window().photos().photos().empty(); }));
    controller->perform(Command::selectAll);
    run(Command::exportSelectedPhotos, Asks::Nothing);
    expectExported(filesOf(items(Section::CameraRoll)));
    run(Command::exportOrStop, Asks::Nothing);
    expectExported(filesOf(items(Section::CameraRoll)));
}

TEST_F(ExportCommandsTest, TheSelectedPlaylistAndAlbumAreExported)
{
    openOnSamplePhone();
    const Playlist* playlist = device().trackDb()->playlists().front();
    choose(playlist->name);
    run(Command::exportSelectedPlaylist, Asks::Mode);
    expectExported(filesOf(playlist->tracks));

    const Album* album = device().photoDb()->albums().front();
    choose(album->name);
    run(Command::exportSelectedPhotoAlbum, Asks::Nothing);
    expectExported(filesOf(album->photos));
}
