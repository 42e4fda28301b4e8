#include "Platform/Notifier.h"

#include "support/DesktopServices.h"
#include "support/EventLoop.h"
#include "support/Files.h"

#include <QDBusArgument>
#include <QDBusUnixFileDescriptor>
#include <QElapsedTimer>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <limits>
#include <optional>

namespace
{
const QString Notify = QStringLiteral("org.freedesktop.Notifications.Notify");
const QString HoldSleep = QStringLiteral("org.freedesktop.login1.Manager.Inhibit");
const QString HoldScreen = QStringLiteral("org.freedesktop.ScreenSaver.Inhibit");
const QString FreeScreen = QStringLiteral("org.freedesktop.ScreenSaver.UnInhibit");

QVariantMap map(const QDBusMessage& message, int argument)
{
    return qdbus_cast<QVariantMap>(message.arguments().value(argument));
}

/// A lock as the login manager gives it: one end of a pipe, held until nobody has it any more.
class SleepLock
{
public:
    SleepLock() { EXPECT_EQ(pipe2(_ends.data(), O_CLOEXEC), 0); }
    ~SleepLock()
    {
        close(_ends[0]);
        closeOwn();
    }
    SleepLock(const SleepLock&) = delete;
    SleepLock& operator=(const SleepLock&) = delete;

    /// The end to give away; this object keeps none.
    QVariant give()
    {
        const QDBusUnixFileDescriptor descriptor(_ends[1]);
        closeOwn();
        return QVariant::fromValue(descriptor);
    }
    [[nodiscard]] bool isHeld() const
    {
        pollfd end = {_ends[0], POLLIN, 0};
        return poll(&end, 1, 0) == 0;
    }

private:
    void closeOwn()
    {
        if (_ends[1] >= 0)
            close(_ends[1]);
        _ends[1] = -1;
    }

    std::array<int, 2> _ends = {-1, -1};
};

class NotifierTest : public testing::Test
{
protected:
    NotifierTest()
        : services(bus, {QStringLiteral("org.freedesktop.Notifications"),
                         QStringLiteral("org.freedesktop.login1"),
                         QStringLiteral("org.freedesktop.ScreenSaver")})
        , notifier(std::in_place, bus.connect(), bus.connect())
    {
        services.answer(Notify, [] { return QVariantList{quint32(41)}; });
        services.answer(HoldSleep, [this] { return QVariantList{lock.give()}; });
        services.answer(HoldScreen, [] { return QVariantList{quint32(7)}; });
        services.answer(FreeScreen, [] { return QVariantList(); });
    }

    /// Waits until the bus has carried everything that was sent before: it keeps the order.
    void settle()
    {
        notifier->jobFinished(QString(), QString());
        const std::size_t count = services.calls(Notify).size();
        EXPECT_TRUE(waitUntil([&] { return services.calls(Notify).size() > count; }));
    }

    bool isCalled(const QString& method, std::size_t times = 1)
    {
        return waitUntil([&] { return services.calls(method).size() == times; });
    }

    PrivateBus bus;
    SleepLock lock;
    DesktopServices services;
    std::optional<Notifier> notifier;
};
} // namespace

TEST_F(NotifierTest, ShowsProgressOnTheTaskBar)
{
    notifier->showProgress(0.25);
    ASSERT_TRUE(waitUntil([&] { return !services.updates().empty(); }));
    const QDBusMessage update = services.updates().front();
    EXPECT_EQ(update.path(), "/io/zell/Transfer");
    EXPECT_EQ(update.signature(), "sa{sv}");
    EXPECT_EQ(update.arguments().value(0).toString(), "application://io.zell.Transfer.desktop");
    EXPECT_EQ(map(update, 1).value("progress").toDouble(), 0.25);
    EXPECT_TRUE(map(update, 1).value("progress-visible").toBool());
}

TEST_F(NotifierTest, TellsEachHundredthOfProgressOnce)
{
    for (int i = 0; i <= 5000; ++i)
        notifier->showProgress(i / 5000.0);
    settle();
    EXPECT_EQ(services.updates().size(), 101U);
}

TEST_F(NotifierTest, KeepsProgressWithinItsBounds)
{
    for (const double fraction : {-3.0, 7.0, std::numeric_limits<double>::quiet_NaN(),
                                  std::numeric_limits<double>::infinity()})
        notifier->showProgress(fraction);
    settle();
    std::vector<double> told;
    for (const QDBusMessage& update : services.updates())
        told.push_back(map(update, 1).value("progress").toDouble());
    EXPECT_EQ(told, (std::vector<double>{0, 1, 0, 1}));
}

TEST_F(NotifierTest, HidesProgressOnceWhereItWasShown)
{
    notifier->hideProgress();
    notifier->showProgress(0.5);
    notifier->hideProgress();
    notifier->hideProgress();
    settle();
    ASSERT_EQ(services.updates().size(), 2U);
    EXPECT_FALSE(map(services.updates().back(), 1).value("progress-visible").toBool());
}

TEST_F(NotifierTest, TellsThatAJobHasFinished)
{
    notifier->jobFinished("Export finished!", "3 of 812 items <b>were</b> not copied & more");
    ASSERT_TRUE(isCalled(Notify));
    const QDBusMessage call = services.calls(Notify).front();
    EXPECT_EQ(call.signature(), "susssasa{sv}i");
    EXPECT_EQ(call.arguments().value(1).toUInt(), 0U);
    EXPECT_EQ(call.arguments().value(2).toString(), "zell-transfer");
    EXPECT_EQ(call.arguments().value(3).toString(), "Export finished!");
    EXPECT_EQ(call.arguments().value(4).toString(),
              "3 of 812 items &lt;b&gt;were&lt;/b&gt; not copied &amp; more");
    EXPECT_EQ(map(call, 6).value("desktop-entry").toString(), "io.zell.Transfer");
}

TEST_F(NotifierTest, ReplacesItsLastNotification)
{
    // The answer with the number comes some time after the call.
    EXPECT_TRUE(waitUntil([&] {
        notifier->jobFinished("Another", QString());
        const std::vector<QDBusMessage> calls = services.calls(Notify);
        return !calls.empty() && calls.back().arguments().value(1).toUInt() == 41U;
    }));
}

TEST_F(NotifierTest, HoldsSleepOffUntilItMayCome)
{
    notifier->keepAwake("Exporting");
    ASSERT_TRUE(isCalled(HoldSleep) && isCalled(HoldScreen));
    const QVariantList arguments = services.calls(HoldSleep).front().arguments();
    EXPECT_EQ(arguments.value(0).toString(), "sleep:idle");
    EXPECT_EQ(arguments.value(2).toString(), "Exporting");
    EXPECT_EQ(arguments.value(3).toString(), "block");
    EXPECT_EQ(services.calls(HoldScreen).front().arguments().value(1).toString(), "Exporting");
    settle();
    EXPECT_TRUE(lock.isHeld());

    notifier->letSleep();
    ASSERT_TRUE(isCalled(FreeScreen));
    EXPECT_EQ(services.calls(FreeScreen).front().arguments().value(0).toUInt(), 7U);
    EXPECT_TRUE(waitUntil([&] { return !lock.isHeld(); }));
}

TEST_F(NotifierTest, AsksOnceHoweverOftenItIsToStayAwake)
{
    notifier->keepAwake("Exporting");
    notifier->keepAwake("Exporting");
    settle();
    EXPECT_EQ(services.calls(HoldSleep).size(), 1U);
    EXPECT_EQ(services.calls(HoldScreen).size(), 1U);
}

TEST_F(NotifierTest, GivesBackWhatIsGrantedTooLate)
{
    services.hold(HoldSleep);
    services.hold(HoldScreen);
    notifier->keepAwake("Exporting");
    ASSERT_TRUE(isCalled(HoldSleep) && isCalled(HoldScreen));
    notifier->letSleep();
    services.answerHeld();
    EXPECT_TRUE(isCalled(FreeScreen));
    EXPECT_TRUE(waitUntil([&] { return !lock.isHeld(); }));
}

TEST_F(NotifierTest, GivesBackWhatIsGrantedAfterItsEnd)
{
    services.hold(HoldSleep);
    services.hold(HoldScreen);
    notifier->keepAwake("Exporting");
    ASSERT_TRUE(isCalled(HoldSleep) && isCalled(HoldScreen));
    notifier.reset();
    services.answerHeld();
    EXPECT_TRUE(isCalled(FreeScreen));
    EXPECT_TRUE(waitUntil([&] { return !lock.isHeld(); }));
}

TEST_F(NotifierTest, LeavesNothingBehindAtItsEnd)
{
    notifier->showProgress(0.5);
    notifier->keepAwake("Exporting");
    settle();
    notifier.reset();
    EXPECT_TRUE(isCalled(FreeScreen));
    EXPECT_TRUE(waitUntil([&] { return !lock.isHeld(); }));
    EXPECT_TRUE(waitUntil([&] { return services.updates().size() == 2; }));
    EXPECT_FALSE(map(services.updates().back(), 1).value("progress-visible").toBool());
}

TEST_F(NotifierTest, NeverWaitsForAServiceThatHangs)
{
    for (const QString& method : {Notify, HoldSleep, HoldScreen, FreeScreen})
        services.hold(method);
    QElapsedTimer timer;
    timer.start();
    notifier->keepAwake("Exporting");
    notifier->showProgress(0.5);
    notifier->jobFinished("Done", QString());
    notifier->letSleep();
    notifier.reset();
    EXPECT_LT(timer.elapsed(), 1000);
}

TEST(NotifierAlone, IsSilentWithoutABus)
{
    const QDBusConnection none(QStringLiteral("no such connection"));
    Notifier notifier(none, none);
    notifier.keepAwake("Exporting");
    notifier.showProgress(0.5);
    notifier.jobFinished("Done", QString());
    QCoreApplication::processEvents();
    notifier.letSleep();
}

TEST(NotifierAlone, IsSilentWithoutServices)
{
    PrivateBus bus;
    {
        Notifier notifier(bus.connect(), bus.connect());
        notifier.keepAwake("Exporting");
        notifier.jobFinished("Done", QString());
        const QDeadlineTimer soon(200); // for the errors to come back
        while (!soon.hasExpired())
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    QCoreApplication::processEvents();
}

TEST(NotifierAlone, IsMadeAtOnceWhereThereIsNoBus)
{
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    qputenv("XDG_RUNTIME_DIR", "/no such folder");
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/no such bus");
    QElapsedTimer timer;
    timer.start();
    {
        Notifier notifier;
        notifier.keepAwake("Exporting");
        notifier.showProgress(0.5);
        notifier.jobFinished("Done", QString());
    }
    EXPECT_LT(timer.elapsed(), 1000);
    qunsetenv("XDG_RUNTIME_DIR");
    qunsetenv("DBUS_SYSTEM_BUS_ADDRESS");
}
