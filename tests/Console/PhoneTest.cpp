#include "Base/Utility.h"
#include "support/ConsoleRun.h"
#include "support/LargeLibrary.h"
#include "support/PrivateMounts.h"
#include "support/SamplePlayer.h"
#include "support/phone/PhoneFixture.h"

#include <QDirIterator>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QThread>

#include <gtest/gtest.h>

#include <map>

namespace
{
/// A phone that holds the sample library, read by the real console program.
class PhoneConsole : private PrivateMounts::Place, public PhoneFixture
{
protected:
    PhoneConsole()
    {
        EXPECT_EQ(SamplePlayer::write(path("player")), "");
        // The same library in the place where phones have it.
        QDir(onPhone("/iTunes_Control")).removeRecursively();
        QDir().mkpath(path("phone"));
        EXPECT_TRUE(QFile::rename(path("player/iPod_Control"), onPhone("/iTunes_Control")));
        QFile::link("iTunes_Control", onPhone("/iPod_Control"));
        phone = newPhone("phone-1");
    }
    ~PhoneConsole() override { EXPECT_EQ(usb.savedRecords(), 0); }

    /// Puts a small library of the sample's first tracks in the place of the whole.
    void useFewTracks(int count)
    {
        TestLibrary library = SamplePlayer::library();
        library.tracks.resize(std::size_t(count));
        library.playlists.clear();
        EXPECT_EQ(SamplePlayer::write(path("few"), library), "");
        QDir(onPhone("/iTunes_Control")).removeRecursively();
        EXPECT_TRUE(QFile::rename(path("few/iPod_Control"), onPhone("/iTunes_Control")));
    }

    /// What a folder holds, by relative path.
    static std::map<QString, QByteArray> tree(const QString& folder)
    {
        std::map<QString, QByteArray> files;
        QDirIterator all(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (all.hasNext()) {
            const QString file = all.next();
            files[QDir(folder).relativeFilePath(file)] = Files::read(file);
        }
        return files;
    }

    std::shared_ptr<SimulatedPhone> phone;
};
} // namespace

TEST_F(PhoneConsole, ListsPhonesAmongTheDevices)
{
    usb.attach(phone);
    const ConsoleRun run({"devices"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.text(), "phone-1\tMira's Player\n");
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(ConsoleRun({"list", "--device", "phone-1"}).exitCode, 0);
    const QJsonDocument json = QJsonDocument::fromJson(ConsoleRun({"devices", "--json"}).output);
    EXPECT_EQ(json[0]["family"].toString(), "phone");
    EXPECT_EQ(json[0]["bookPath"].toString(), "/Books");
}

TEST_F(PhoneConsole, WaitsForAPhoneThatAnswersSlowly)
{
    PhoneFaults faults;
    faults.slowMilliseconds = 5;
    phone->setFaults(faults);
    usb.attach(phone);
    EXPECT_EQ(ConsoleRun({"devices", "--wait", "20"}).text(), "phone-1\tMira's Player\n");
}

TEST_F(PhoneConsole, DoesNotWaitWithoutAPhone)
{
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(ConsoleRun({"devices", "--wait", "30"}).errors, "No device is connected.\n");
    EXPECT_LT(timer.elapsed(), 10'000);
}

TEST_F(PhoneConsole, DoesNotWaitLongerThanAskedForAPhoneThatHangs)
{
    PhoneFaults faults;
    faults.hangsAtDoor = true;
    phone->setFaults(faults);
    usb.attach(phone);
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(ConsoleRun({"devices", "--wait", "1"}).errors, "No device is connected.\n");
    EXPECT_LT(timer.elapsed(), 15'000);
}

TEST_F(PhoneConsole, SaysInPlainWordsWhyAPhoneCannotBeUsed)
{
    PhoneFaults faults;
    faults.hasRecord = false;
    phone->setFaults(faults);
    usb.attach(phone);
    const ConsoleRun run({"list"});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_TRUE(run.errors.contains("tap Trust"));
    EXPECT_TRUE(run.errors.contains("(Device pairing failed)"));
    EXPECT_TRUE(run.errors.contains("No device is connected."));
}

TEST_F(PhoneConsole, GivesByteForByteWhatTheSameFilesGiveAsAFolder)
{
    usb.attach(phone);
    const ConsoleRun phoneDump({"dump", "--device", "phone-1"});
    const ConsoleRun phoneExport({"export", "all", "--device", "phone-1", "--to", path("a"),
                                  "--report", path("a.log"), "--quiet"});
    // A phone resolves its links itself; below a folder none is followed.
    ASSERT_TRUE(QFile::remove(onPhone("/iPod_Control")));
    ASSERT_TRUE(QFile::rename(onPhone("/iTunes_Control"), onPhone("/iPod_Control")));
    const ConsoleRun folderDump({"dump", "--device", path("phone")});
    ASSERT_EQ(phoneDump.exitCode, 0);
    QJsonObject fromPhone = phoneDump.json();
    QJsonObject fromFolder = folderDump.json();
    const QByteArray prefix = folderDump.json()["device"].toObject()["prefix"].toString().toUtf8();
    fromPhone.remove("device");
    fromFolder.remove("device");
    // Only a phone has a camera roll; here it is empty.
    EXPECT_TRUE(fromFolder.take("cameraRollDb").isNull());
    EXPECT_TRUE(fromPhone.take("cameraRollDb").toObject()["photos"].toArray().isEmpty());
    // A player's files stand below the folder, a phone's at the root of its own.
    QByteArray folderText = QJsonDocument(fromFolder).toJson();
    folderText.replace(prefix + '/', "/");
    EXPECT_EQ(QJsonDocument(fromPhone).toJson(), folderText);

    const ConsoleRun folderExport({"export", "all", "--device", path("phone"), "--to", path("b"),
                                   "--report", path("b.log"), "--quiet"});
    EXPECT_EQ(phoneExport.exitCode, folderExport.exitCode) << phoneExport.errors.toStdString();
    const auto copies = tree(path("a"));
    EXPECT_GT(copies.size(), 200U);
    EXPECT_EQ(copies, tree(path("b")));
}

TEST_F(PhoneConsole, ReadsEachDatabaseOfALibraryAtMostTwice)
{
    QDir(onPhone("/iTunes_Control")).removeRecursively();
    EXPECT_EQ(SamplePlayer::writeLibrary(path("large"), largeLibrary(2000),
                                         SamplePlayer::Format::MediaLibrary),
              "");
    EXPECT_TRUE(QFile::rename(path("large/iPod_Control"), onPhone("/iTunes_Control")));
    usb.attach(phone);
    EXPECT_EQ(ConsoleRun({"list", "--device", "phone-1"}).exitCode, 0);
    const QHash<QString, int> opens = phone->opens();
    EXPECT_TRUE(std::any_of(opens.keyBegin(), opens.keyEnd(), [](const QString& name) {
        return name.endsWith("/MediaLibrary.sqlitedb");
    }));
    for (auto open = opens.begin(); open != opens.end(); ++open)
        EXPECT_LE(open.value(), 2) << open.key().toStdString();
}

TEST_F(PhoneConsole, IsRightAboutEveryItemOfAPhoneThatIsPulledOut)
{
    constexpr int Runs = 100;
    useFewTracks(30);
    qint64 wholeTime = 0;
    const auto whole = [&] {
        usb.attach(phone);
        QElapsedTimer timer;
        timer.start();
        EXPECT_EQ(
            ConsoleRun({"export", "all", "--to", path("whole"), "--quiet", "--clash", "number"})
                .exitCode,
            0);
        wholeTime = timer.elapsed();
        usb.detach(phone);
        return tree(path("whole"));
    }();
    int broken = 0;
    for (int run = 0; run < Runs; ++run) {
        const QString out = path(QString("out%1").arg(run));
        usb.attach(phone);
        QProcess program;
        program.start(ConsoleRun::program(), {"export", "all", "--to", out, "--report",
                                              out + ".log", "--quiet", "--clash", "number"});
        QThread::msleep(QRandomGenerator::global()->bounded(quint32(wholeTime)));
        usb.detach(phone);
        ASSERT_TRUE(program.waitForFinished(60'000));
        ASSERT_EQ(program.exitStatus(), QProcess::NormalExit);
        if (!QFileInfo::exists(out + ".log")) {
            EXPECT_EQ(program.exitCode(), 3) << program.readAllStandardError().toStdString();
            continue;
        }
        for (const QJsonObject& item : readReport(out + ".log")) {
            const QString to = item["to"].toString();
            const QString result = item["result"].toString();
            broken += result == u"copied" ? 0 : 1;
            if (result == u"copied") {
                EXPECT_EQ(Files::read(to), whole.at(QDir(out).relativeFilePath(to)))
                    << to.toStdString();
            } else {
                EXPECT_TRUE(result == u"incomplete" || result == u"failed")
                    << result.toStdString() << ' ' << item["why"].toString().toStdString();
            }
        }
        QDir(out).removeRecursively();
    }
    EXPECT_GT(broken, 0);
}
