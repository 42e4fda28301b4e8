// Interrupts of commands that wait for a phone, and phones that come while they wait.

#include "support/ConsoleRun.h"
#include "support/PrivateMounts.h"
#include "support/SamplePlayer.h"
#include "support/phone/PhoneFixture.h"

#include <QElapsedTimer>
#include <QThread>

#include <gtest/gtest.h>
#include <signal.h>

namespace
{
/// Longer than anything here takes, however busy the machine; shorter than what phones may take.
constexpr int Soon = 5000;

class PhoneWait : private PrivateMounts::Place, public PhoneFixture
{
protected:
    PhoneWait()
    {
        EXPECT_EQ(SamplePlayer::write(path("player")), "");
        QDir(onPhone("/iTunes_Control")).removeRecursively();
        QDir().mkpath(path("phone"));
        EXPECT_TRUE(QFile::rename(path("player/iPod_Control"), onPhone("/iTunes_Control")));
        phone = newPhone("phone-1");
    }

    /// Runs the program until somebody has asked for the phones.
    void start(QProcess& process, const QStringList& arguments)
    {
        process.start(ConsoleRun::program(), arguments);
        ASSERT_TRUE(process.waitForStarted(30000));
    }
    /// Waits until the phone's own service was asked for something, which hangs.
    void waitUntilAsked() const
    {
        QElapsedTimer timer;
        timer.start();
        while (phone->requests().isEmpty() && timer.elapsed() < 30000)
            QThread::msleep(10);
        ASSERT_FALSE(phone->requests().isEmpty());
    }
    void makeHang()
    {
        PhoneFaults faults;
        faults.hangsAtDoor = true;
        phone->setFaults(faults);
        usb.attach(phone);
    }

    std::shared_ptr<SimulatedPhone> phone;
};
} // namespace

TEST_F(PhoneWait, EndsWithAnInterruptThoughThePhoneStalls)
{
    makeHang();
    for (const QStringList& command :
         {QStringList({"list", "--wait", "60"}), QStringList({"dump", "--wait", "60"}),
          QStringList({"export", "all", "--wait", "60", "--to", path("out")}),
          QStringList({"devices", "--wait", "60"})}) {
        phone->forget();
        QProcess process;
        start(process, command);
        waitUntilAsked();
        QElapsedTimer timer;
        timer.start();
        ASSERT_EQ(kill(pid_t(process.processId()), SIGINT), 0);
        ASSERT_TRUE(process.waitForFinished(30000));
        EXPECT_LT(timer.elapsed(), Soon);
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(process.exitCode(), 130) << command[0].toStdString();
        EXPECT_FALSE(process.readAllStandardError().contains("No device"));
    }
}

TEST_F(PhoneWait, SeesAPhoneThatIsPluggedInMeanwhile)
{
    for (const QStringList& command :
         {QStringList({"devices", "--wait", "60"}), QStringList({"list", "--wait", "60"}),
          QStringList({"list", "--wait", "60", "--device", "phone-1"})}) {
        QProcess process;
        start(process, command);
        QThread::msleep(300); // longer than the program took to look and go in vain
        EXPECT_EQ(process.state(), QProcess::Running);
        usb.attach(phone);
        ASSERT_TRUE(process.waitForFinished(60000));
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        EXPECT_FALSE(process.readAllStandardOutput().isEmpty());
        usb.detach(phone);
    }
}

TEST_F(PhoneWait, IsLongEnoughForAPhoneThatIsSlowToOpen)
{
    PhoneFaults faults;
    faults.slowMilliseconds = 150; // more than the two seconds of a plain look, in all
    phone->setFaults(faults);
    usb.attach(phone);
    const ConsoleRun run({"list", "--wait", "60", "movies"});
    EXPECT_EQ(run.exitCode, 0) << run.errors.toStdString();
    EXPECT_EQ(run.text().count('\n'), 7);
}

TEST_F(PhoneWait, SaysThatAPhoneHasNotAnswered)
{
    makeHang();
    const ConsoleRun run({"list", "--wait", "0.5"});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_TRUE(run.errors.contains("has not answered")) << run.errors.toStdString();
    EXPECT_TRUE(run.errors.contains("No device is connected."));
}
