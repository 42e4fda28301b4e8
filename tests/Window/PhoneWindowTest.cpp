// The window with phones on the USB: the libraries that speak to phones are real, the phones
// behind them simulated.

#include "Platform/PhoneFileService.h"
#include "support/WindowFixture.h"
#include "support/phone/SimulatedUsb.h"

#include <QElapsedTimer>
#include <QProcess>

#include <algorithm>

namespace
{
using std::chrono::milliseconds;

constexpr qint64 MiB = 1024 * 1024;
/// A phone that hangs is given up by then, on a busy computer as well.
constexpr milliseconds GivenUp = 2 * PhoneFileService::Patience + std::chrono::seconds(10);

class PhoneWindowTest : public WindowFixture
{
protected:
    PhoneWindowTest()
        : usb(path("usb"))
    {
        qputenv("USBMUXD_SOCKET_ADDRESS", usb.address());
    }

    void addMany(int count)
    {
        for (int i = 0; i < count; ++i)
            add(QString("Track %1").arg(i), QByteArray(MiB / 4, 'x'));
    }
    /// A phone that holds the tracks added so far.
    std::shared_ptr<SimulatedPhone> newPhone(const QString& name)
    {
        writePlayer(name, "iTunes_Control");
        SimulatedPhone::Identity identity;
        identity.identifier = "phone-" + name;
        identity.root = path(name);
        return std::make_shared<SimulatedPhone>(identity);
    }
    static void slow(SimulatedPhone& phone, int byMilliseconds)
    {
        phone.changeFaults(
            [byMilliseconds](PhoneFaults& faults) { faults.slowMilliseconds = byMilliseconds; });
    }
    static void hang(SimulatedPhone& phone, qint64 afterOperations = 0)
    {
        phone.changeFaults([afterOperations](PhoneFaults& faults) {
            faults.hangAfterOperations = afterOperations;
        });
    }
    bool lists(const QStringList& names)
    {
        return waitUntil([&] { return devices() == names; }, GivenUp);
    }
    /// Exports from a phone that is so slow that there is time to look around.
    void startSlowExport(SimulatedPhone& phone)
    {
        slow(phone, 100);
        startExport();
        ASSERT_TRUE(waitUntil([&] { return QFile::exists(copyOf("Track 1")); }));
        ASSERT_TRUE(controller->jobs().isExport());
    }
    QString copyOf(const QString& title) { return out("Music/Artist/Album/" + title + ".mp3"); }
    /// Whether the window answers a person's clicks, keys and commands long before anybody would
    /// have given up a phone.
    bool answers()
    {
        QElapsedTimer timer;
        timer.start();
        Hands::click(&window().searchField());
        Hands::key("t");
        const bool typed = waitUntil([this] { return window().searchField().text() == "t"; });
        Hands::key("BackSpace");
        const bool deleted = waitUntil([this] { return window().searchField().text().isEmpty(); });
        window().tracks().setFocus();
        Hands::key("ctrl+f");
        const bool found = waitUntil([this] { return window().searchField().hasFocus(); });
        return typed && deleted && found &&
               timer.elapsed() < PhoneFileService::Patience.count() / 2;
    }

    SimulatedUsb usb;
};
} // namespace

TEST_F(PhoneWindowTest, TwoPhonesComeAndGo)
{
    add("One", "first");
    const auto mira = newPhone("Mira");
    add("Two", "second");
    add("Three", "third");
    const auto noah = newPhone("Noah");
    usb.attach(mira);
    open();
    ASSERT_TRUE(lists({"Mira"}));
    EXPECT_TRUE(info().startsWith("iPod Connected! (")) << info().toStdString();
    EXPECT_EQ(titles(), QStringList("One"));
    usb.attach(noah);
    ASSERT_TRUE(lists({"Mira", "Noah"}));
    EXPECT_EQ(titles(), QStringList("One")) << "the first stays the current one";
    EXPECT_TRUE(source("Music (1)").isValid());

    chooseNextDevice();
    ASSERT_TRUE(waitUntil([this] { return titles() == QStringList({"Two", "Three"}); }));
    EXPECT_TRUE(source("Music (2)").isValid());

    usb.detach(noah);
    ASSERT_TRUE(lists({"Mira"}));
    EXPECT_EQ(titles(), QStringList("One")) << "the one that is left becomes current";
    EXPECT_TRUE(info().startsWith("iPod Disconnected! (")) << info().toStdString();
    usb.detach(mira);
    ASSERT_TRUE(lists({}));
    EXPECT_TRUE(titles().isEmpty());
    EXPECT_TRUE(info().startsWith("iPod Disconnected! (")) << info().toStdString();
    EXPECT_FALSE(part<QPushButton>("_btnExport")->isEnabled());
}

TEST_F(PhoneWindowTest, OnePhoneExportsWhileAnotherArrivesIsLookedAtAndLeaves)
{
    constexpr int Count = 20;
    std::vector<QByteArray> contents;
    for (int i = 0; i < Count; ++i) {
        contents.push_back(Files::content(MiB + i).mid(i));
        add(QString("Track %1").arg(i), contents.back());
    }
    const auto mira = newPhone("Mira");
    add("Two", "second");
    const auto noah = newPhone("Noah");
    usb.attach(mira);
    open();
    ASSERT_TRUE(waitUntil([this] { return titles().size() == Count; }));
    startSlowExport(*mira);

    usb.attach(noah);
    ASSERT_TRUE(lists({"Mira", "Noah"}));
    chooseNextDevice();
    ASSERT_TRUE(waitUntil([this] { return titles() == QStringList("Two"); }));
    EXPECT_TRUE(answers());
    usb.detach(noah);
    ASSERT_TRUE(lists({"Mira"}));
    EXPECT_TRUE(controller->jobs().isExport()) << "all this was while it went on";

    slow(*mira, 0);
    ASSERT_TRUE(waitUntil([this] { return !controller->jobs().isExport(); }, GivenUp));
    EXPECT_EQ(closeAlert(), "Export finished!");
    for (int i = 0; i < Count; ++i)
        EXPECT_EQ(Files::read(copyOf(QString("Track %1").arg(i))), contents[std::size_t(i)]) << i;
    EXPECT_FALSE(part<QToolButton>("_btnFailures")->isVisible());
}

TEST_F(PhoneWindowTest, SaysWhyAPhoneIsNotShownAndShowsItOnceItTrustsTheComputer)
{
    add("One", "first");
    const auto noah = newPhone("Noah");
    add("Two", "second");
    const auto mira = newPhone("Mira");
    mira->changeFaults([](PhoneFaults& faults) { faults.hasRecord = false; });
    usb.attach(noah);
    open();
    ASSERT_TRUE(lists({"Noah"}));
    usb.attach(mira);
    ASSERT_TRUE(waitUntil([this] {
        return info() == "The phone does not trust this computer. Unlock the phone, connect it "
                         "again and tap Trust. (Device pairing failed)";
    })) << info().toStdString();
    EXPECT_EQ(devices(), QStringList("Noah"));
    EXPECT_EQ(titles(), QStringList("One"));

    mira->setFaults({});
    usb.tellPaired(mira);
    ASSERT_TRUE(lists({"Noah", "Mira"}));
    EXPECT_TRUE(info().startsWith("iPod Connected! (")) << info().toStdString();
    chooseNextDevice();
    EXPECT_TRUE(waitUntil([this] { return titles() == QStringList("Two"); }));
}

TEST_F(PhoneWindowTest, SaysThatAPhoneIsLockedAndShowsItOnceItIsConnectedUnlocked)
{
    add("One", "first");
    const auto phone = newPhone("Mira");
    phone->changeFaults([](PhoneFaults& faults) { faults.locked = true; });
    open();
    usb.attach(phone);
    ASSERT_TRUE(waitUntil([this] {
        return info() == "The phone is locked. Unlock it and connect it again. "
                         "(AMDeviceStartSession failed with error -17)";
    })) << info().toStdString();
    EXPECT_TRUE(devices().isEmpty());
    EXPECT_TRUE(part<QWidget>("_vEmpty")->isVisible());

    usb.detach(phone);
    EXPECT_TRUE(waitUntil([this] { return info().isEmpty(); })) << "it is not there any more";
    phone->setFaults({});
    usb.attach(phone);
    ASSERT_TRUE(lists({"Mira"}));
    EXPECT_TRUE(info().startsWith("iPod Connected! (")) << info().toStdString();
    EXPECT_EQ(titles(), QStringList("One"));
}

TEST_F(PhoneWindowTest, KeepsTheLevelInBoundsWhateverSizeAPhoneClaims)
{
    const QByteArray content = Files::content(3 * MiB);
    add("One", content);
    add("Two", content);
    const auto phone = newPhone("Mira");
    phone->changeFaults([](PhoneFaults& faults) {
        faults.sizes["/iTunes_Control/Music/F00/1.mp3"] = "0";
        faults.sizes["/iTunes_Control/Music/F00/2.mp3"] = "1";
    });
    usb.attach(phone);
    open();
    ASSERT_TRUE(waitUntil([this] { return titles().size() == 2; }));
    std::vector<int> levels;
    const auto* bar = window().findChild<QProgressBar*>("_li");
    QObject::connect(bar, &QProgressBar::valueChanged, bar,
                     [&](int value) { levels.push_back(value); });
    startExport();
    EXPECT_EQ(closeAlert(), "Export finished!");
    EXPECT_FALSE(QFile::exists(copyOf("One"))) << "nobody knows what it would hold";
    EXPECT_EQ(Files::read(copyOf("Two")), content.first(1));
    EXPECT_NE(std::find(levels.begin(), levels.end(), bar->maximum()), levels.end());
    for (const int level : levels)
        EXPECT_TRUE(level >= 0 && level <= bar->maximum()) << level;
}

TEST_F(PhoneWindowTest, AnswersWhileAPhoneHangsAtItsDoor)
{
    add("One", "first");
    const auto hanging = newPhone("Hanging");
    hanging->changeFaults([](PhoneFaults& faults) { faults.hangsAtDoor = true; });
    add("Two", "second");
    const auto noah = newPhone("Noah");
    usb.attach(hanging);
    usb.attach(noah);
    open();
    ASSERT_TRUE(lists({"Noah"}));
    EXPECT_TRUE(answers());
    usb.detach(hanging);
    usb.detach(noah);
    EXPECT_TRUE(lists({}));
}

TEST_F(PhoneWindowTest, AnswersWhileAPhoneHangsInAnExportAndTakesItBackOnceItAnswers)
{
    addMany(50);
    const auto phone = newPhone("Mira");
    usb.attach(phone);
    open();
    ASSERT_TRUE(waitUntil([this] { return titles().size() == 50; }));
    startSlowExport(*phone);
    hang(*phone);
    EXPECT_TRUE(answers());
    ASSERT_TRUE(controller->jobs().isExport());
    // A stop does not wait for the phone: what tells the person may stand there at once, and keep
    // the keyboard.
    Hands::click(part<QPushButton>("_btnExport"));
    ASSERT_TRUE(waitUntil([this] { return !controller->jobs().isExport(); }, GivenUp));
    EXPECT_EQ(closeAlert(), "Export canceled!");
    EXPECT_TRUE(answers());
    ASSERT_TRUE(waitUntil([this] { return !controller->jobs().isBusy(); }));
    const ExportReport& report = *controller->jobs().report();
    EXPECT_EQ(report.items().size(), 50U);
    EXPECT_EQ(report.items().front().result, ExportItem::Result::Copied);
    EXPECT_EQ(report.items().back().result, ExportItem::Result::Stopped);
    ASSERT_TRUE(waitUntil([this] { return info().startsWith("The phone has stopped answering."); },
                          GivenUp));

    phone->setFaults({});
    ASSERT_TRUE(waitUntil([this] { return info() == "iPod Connected! (Mira)"; }, GivenUp));
    EXPECT_EQ(devices(), QStringList("Mira"));
    EXPECT_EQ(titles().size(), 50);
}

TEST_F(PhoneWindowTest, QuitsWhileAPhoneHangsInAnExport)
{
    addMany(50);
    const auto phone = newPhone("Mira");
    usb.attach(phone);
    open();
    ASSERT_TRUE(waitUntil([this] { return titles().size() == 50; }));
    startSlowExport(*phone);
    hang(*phone);
    stopAndQuit();
    ASSERT_TRUE(waitUntil([this] { return !window().isVisible(); }, GivenUp));
    EXPECT_FALSE(controller->jobs().isBusy());
    QElapsedTimer timer;
    timer.start();
    controller.reset();
    EXPECT_LT(timer.elapsed(), PhoneFileService::Patience.count());
}

TEST_F(PhoneWindowTest, AnswersAgainAfterAPhoneThatHungWhenItWasChosen)
{
    add("One", "first");
    const auto mira = newPhone("Mira");
    add("Two", "second");
    const auto noah = newPhone("Noah");
    usb.attach(mira);
    open();
    ASSERT_TRUE(lists({"Mira"}));
    usb.attach(noah);
    ASSERT_TRUE(lists({"Mira", "Noah"}));
    hang(*noah);
    QElapsedTimer timer;
    timer.start();
    chooseNextDevice();
    ASSERT_TRUE(waitUntil([this] { return info().startsWith("The phone has stopped answering."); },
                          GivenUp));
    EXPECT_LT(timer.elapsed(), GivenUp.count());
    EXPECT_TRUE(answers());
    usb.detach(noah);
    ASSERT_TRUE(lists({"Mira"}));
    EXPECT_EQ(titles(), QStringList("One"));
}

TEST_F(PhoneWindowTest, TheProgramEndsWhileAPhoneHangs)
{
    add("One", "first");
    const auto phone = newPhone("Mira");
    constexpr int Answered = 3;
    hang(*phone, Answered);
    usb.attach(phone);
    QProcess program;
    program.start(QStringLiteral(ZELL_PROGRAMS "/zell-transfer"), QStringList());
    ASSERT_TRUE(waitUntil([&] { return phone->operations() > Answered; }, GivenUp));
    // Keys that come while the window reads the phone wait for it.
    EXPECT_TRUE(waitUntil(
        [&] {
            Hands::key("ctrl+q");
            return program.state() == QProcess::NotRunning;
        },
        GivenUp));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 0);
    program.kill();
    program.waitForFinished();
}
