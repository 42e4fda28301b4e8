// Exports from phones to which everything happens that can happen to a phone: connections that
// end or stall anywhere, phones that are pulled out, answers that make no sense, files that change,
// lie about their size or never end. Half of the phones speak in the clear.

#include "Base/Exception.h"
#include "Device/CameraRollDb.h"
#include "Device/TrackDb.h"
#include "Device/iPhone/PhoneDevice.h"
#include "Device/iPhone/PhoneSession.h"
#include "Device/iPhone/PluggedPhone.h"
#include "Export/ExportJob.h"
#include "support/ExportFixture.h"
#include "support/SamplePlayer.h"
#include "support/phone/SimulatedUsb.h"

#include <QDirIterator>

#include <gtest/gtest.h>

#include <csignal>
#include <iostream>
#include <map>
#include <random>
#include <thread>

namespace
{
using Result = ExportItem::Result;
using namespace std::chrono_literals;

constexpr int TrackCount = 8;
constexpr int PictureCount = 4;
constexpr auto Longest = 15s;

/// How many phones there are, and which; a longer run is asked for from outside.
int number(const char* variable, int otherwise)
{
    bool isNumber = false;
    const int value = qEnvironmentVariableIntValue(variable, &isNumber);
    return isNumber ? value : otherwise;
}

class PhoneFaultTest : public ExportFixture
{
protected:
    PhoneFaultTest()
        : _usb(path("usb"))
    {
        qputenv("USBMUXD_SOCKET_ADDRESS", _usb.address());
        // Sessions are opened on this thread, while the program does so on one that is prepared.
        sigset_t signals;
        sigemptyset(&signals);
        sigaddset(&signals, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &signals, nullptr);
        TestLibrary library = SamplePlayer::library();
        library.tracks.resize(TrackCount);
        library.playlists.clear();
        EXPECT_EQ(SamplePlayer::write(path("player"), library), "");
        QDir().mkpath(onPhone(""));
        EXPECT_TRUE(QFile::rename(path("player/iPod_Control"), onPhone("/iTunes_Control")));
        QFile::link("iTunes_Control", onPhone("/iPod_Control"));
        int size = 10;
        QDirIterator media(onPhone("/iTunes_Control/Music"), QDir::Files,
                           QDirIterator::Subdirectories);
        while (media.hasNext())
            Files::write(media.next(), Files::content(size *= 4).sliced(3));
        for (int i = 0; i < PictureCount; ++i)
            Files::write(onPhone(QString("/DCIM/100APPLE/IMG_%1.JPG").arg(i)),
                         Files::content(1000 + 400'000 * i).sliced(i));
    }

    [[nodiscard]] QString onPhone(const QString& name) const { return path("phone" + name); }
    int upTo(int most) { return std::uniform_int_distribution<int>(0, most)(_random); }

    /// One export from a phone to which something happens.
    void runOne(unsigned seed)
    {
        _random.seed(seed);
        SCOPED_TRACE(testing::Message() << "ZELL_PHONE_SEED=" << seed);
        const auto start = std::chrono::steady_clock::now();
        SimulatedPhone::Identity identity;
        identity.identifier = "one";
        identity.root = onPhone("");
        identity.tls = seed % 2 == 0;
        _phone = std::make_shared<SimulatedPhone>(identity);
        _usb.attach(_phone);
        ++_attachments;
        _mayBeMissing = false;
        std::jthread puller;
        const bool isEarly = upTo(4) == 0;
        if (isEarly)
            puller = spoil();
        exportAll(isEarly ? std::jthread() : std::move(puller), !isEarly);
        if (puller.joinable())
            puller.join();
        _usb.detach(_phone);
        EXPECT_LT(std::chrono::steady_clock::now() - start, Longest);
        QDir(path("out")).removeRecursively();
    }

    void exportAll(std::jthread puller, bool spoilsNow)
    {
        std::shared_ptr<PhoneSession> session;
        try {
            session = PhoneSession::open(std::make_shared<PluggedPhone>(
                MobileDevice::Attachment{_attachments, 0x12a8, "one"}));
        } catch (const Exception&) {
            ++tally["not opened"];
            return;
        }
        session->files().service().setPatience(300ms);
        const auto device = std::make_shared<PhoneDevice>(session);
        TrackDb* const library = device->trackDb();
        if (spoilsNow)
            puller = spoil();
        const auto tracks = library ? library->tracks() : std::vector<Track*>();
        const auto photos = device->cameraRollDb()->photos();
        ExportReport account;
        ExportJob job(device, config, host, account, host.toStop);
        job.exportTracks(tracks);
        job.exportPhotos(photos);
        EXPECT_EQ(account.items().size(), tracks.size() + photos.size());
        for (const ExportItem& item : account.items())
            judge(item, *device);
    }

    void judge(const ExportItem& item, Device& device)
    {
        ++tally[ExportItem::resultName(item.result).toStdString()];
        if (item.result == Result::Copied) {
            EXPECT_EQ(Files::read(item.to), Files::read(onPhone(item.from)))
                << item.from.toStdString();
            return;
        }
        EXPECT_FALSE(item.why.isEmpty());
        const bool isMissing =
            item.result == Result::Missing && item.kind == ExportItem::Kind::Track;
        EXPECT_TRUE(!isMissing || _mayBeMissing)
            << item.from.toStdString() << ": " << item.why.toStdString()
            << (device.whyGone() ? ", the phone is gone" : "");
        if (item.result == Result::Incomplete) {
            EXPECT_LE(QFileInfo(item.to).size(), LargestClaim);
        }
    }

    /// Something happens now, or from now on. Whoever pulls a phone out is waited for.
    std::jthread spoil()
    {
        PhoneFaults faults;
        std::jthread puller;
        const qint64 bytes = upTo(4'000'000) >> upTo(16);
        switch (upTo(9)) {
        case 0:
            faults.cutAfterBytes = bytes;
            break;
        case 1:
            faults.stallAfterBytes = bytes;
            break;
        case 2:
            faults.linkStallsAfter = bytes / 8;
            break;
        case 3:
            faults.garbageAfterOperations = _phone->operations() + upTo(100);
            break;
        case 4:
            faults.distort = [random = std::mt19937(_random()),
                              countdown = upTo(60)](quint64, QByteArray& answer) mutable {
                if (--countdown < 0) {
                    // In the head: what the bytes of a file say, nobody can check.
                    answer[qsizetype(random() % 40)] = char(random());
                }
            };
            break;
        case 5:
            puller = std::jthread([this, after = upTo(150)] {
                std::this_thread::sleep_for(std::chrono::milliseconds(after));
                _usb.detach(_phone);
            });
            break;
        case 6:
            faults.statuses[someFile()] = quint64(1 + upTo(30));
            _mayBeMissing = true;
            break;
        case 7:
            faults.sizes[someFile()] = QByteArray::number(upTo(int(LargestClaim)));
            break;
        case 8:
            faults.sizesOnceOpen[someFile()] = QByteArray::number(upTo(int(LargestClaim)));
            break;
        default:
            faults.foreverFull = true;
            break;
        }
        if (upTo(3) == 0)
            faults.longestRead = quint64(1 + upTo(100'000));
        _phone->setFaults(faults);
        return puller;
    }

    QString someFile() { return QString("/DCIM/100APPLE/IMG_%1.JPG").arg(upTo(PictureCount - 1)); }

    static constexpr qint64 LargestClaim = 3'000'000;
    std::map<std::string, int> tally;

private:
    SimulatedUsb _usb;
    std::shared_ptr<SimulatedPhone> _phone;
    quint32 _attachments = 0;
    bool _mayBeMissing = false;
    std::mt19937 _random;
};
} // namespace

TEST_F(PhoneFaultTest, ToldTheTruthWhateverHappens)
{
    const int runs = number("ZELL_PHONE_FAULTS", 40);
    const auto first = unsigned(number("ZELL_PHONE_SEED", int(std::random_device()() >> 2)));
    RecordProperty("seed", int(first));
    std::cout << "ZELL_PHONE_SEED=" << first << " ZELL_PHONE_FAULTS=" << runs << std::endl;
    for (int i = 0; i < runs && !HasFailure(); ++i)
        runOne(first + unsigned(i));
    for (const auto& [result, count] : tally)
        std::cout << result << ": " << count << '\n';
}
