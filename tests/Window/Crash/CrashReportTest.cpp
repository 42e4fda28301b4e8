#include "Base/Exception.h"
#include "Base/Fault.h"
#include "Export/Config.h"
#include "Platform/PatientThread.h"
#include "Window/Crash/FaultHandler.h"
#include "Window/Crash/FaultReport.h"
#include "Window/Crash/RaisedException.h"
#include "Window/ExportWorker.h"
#include "support/EventLoop.h"
#include "support/Files.h"
#include "support/Hands.h"

#include <QApplication>
#include <QDialog>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>

#include <optional>

namespace
{
const QString Address = "support@zell.example";

[[gnu::noinline]] void throwInASlot()
{
    throw std::runtime_error("the slot slipped");
}

[[gnu::noinline]] void throwInAJob(const JobContext& job)
{
    job.host.showBegin(3);
    throw Exception("NSRangeException", "4 bytes at 13 of 16");
}

[[gnu::noinline]] void throwInAThread()
{
    throw 7;
}

QString head(const QString& name, const QString& reason)
{
    return "Zell iPod iPhone Transfer has encountered an unexpected error. Please email this "
           "report to support@zell.example so it can be fixed in the next release.\r\r" +
           name + "\r\r" + reason + "\r\rStack Trace:\r";
}

/// The report as it is handed to the alert.
QString reportOf(const RaisedException& exception)
{
    QString report;
    FaultReport(exception, Address, [&](const QString& text) { report += text; });
    return report;
}

class CrashReportTest : public testing::Test
{
protected:
    [[nodiscard]] static QDialog* alert()
    {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->isVisible() && window->objectName() == "_alertCrash")
                return qobject_cast<QDialog*>(window);
        }
        return nullptr;
    }
    /// The text of the alert, with the line ends of the report.
    static QString shown()
    {
        if (!waitUntil([] { return alert() != nullptr; }))
            return {};
        EXPECT_EQ(alert()->windowTitle(), "Unexpected Error");
        const auto buttons = alert()->findChildren<QPushButton*>();
        EXPECT_EQ(buttons.size(), 1);
        EXPECT_EQ(buttons.first()->text().remove(u'&'), "OK");
        return alert()
            ->findChild<QPlainTextEdit*>("_tfReport")
            ->toPlainText()
            .replace(u'\n', u'\r');
    }
    static void close()
    {
        ASSERT_TRUE(waitUntil([] { return alert() && alert()->isActiveWindow(); }));
        QPointer<QDialog> closing = alert();
        Hands::key("Return");
        EXPECT_TRUE(waitUntil([&] { return !closing; }));
    }
    /// Nothing is shown, though the event loop had its time.
    static bool staysAway()
    {
        waitUntil([deadline = QDeadlineTimer(200)] { return deadline.hasExpired(); });
        return !alert();
    }

    FaultHandler handler{Address};
};

/// A window that only hears of its job.
class SilentWindow final : public JobWindow
{
public:
    void showBegin(int /*count*/) override { told.append("begin"); }
    void showProgress(const QString& /*text*/, double /*progress*/) override {}
    void showItem(const ExportItem& /*item*/) override {}
    void showNotPlayed(const QString& /*title*/, const Failure& /*why*/) override {}
    void showFinish(bool canceled, bool /*alert*/) override
    {
        told.append(canceled ? "canceled" : "finished");
    }
    void askClash(const QString& /*path*/, const Reply<ClashAnswer>& /*reply*/) override {}
    void askForHandOver(const Reply<bool>& /*reply*/) override {}
    void handOver(const QString& /*path*/, const std::vector<Playlist*>&) override {}

    QStringList told;
};
} // namespace

TEST_F(CrashReportTest, AnInconsistencyThatBeginsWithLockFocusShowsNothing)
{
    const RaisedException exception{"NSInternalInconsistencyException", "lockFocus on nothing", {}};
    EXPECT_FALSE(FaultHandler::shouldDisplayException(exception));
    EXPECT_TRUE(handler.shouldHandleException(exception));
    EXPECT_TRUE(FaultHandler::shouldLogException(exception));
    EXPECT_TRUE(staysAway());
}

TEST_F(CrashReportTest, AnInconsistencyWithAnyOtherReasonShowsTheReport)
{
    EXPECT_TRUE(handler.shouldHandleException(
        {"NSInternalInconsistencyException", "no lockFocus at the start", {}}));
    EXPECT_TRUE(
        shown().startsWith(head("NSInternalInconsistencyException", "no lockFocus at the start")));
}

TEST_F(CrashReportTest, ExceptionsOfPicturesAndTextsShowNothing)
{
    for (const QString name : {"NSImageCacheException", "GIFReadingException", "NSRTFException"}) {
        EXPECT_FALSE(FaultHandler::shouldDisplayException({name, "any", {}}));
        EXPECT_TRUE(handler.shouldHandleException({name, "any", {}}));
    }
    EXPECT_TRUE(staysAway());
    EXPECT_TRUE(FaultHandler::shouldDisplayException({"N", "lockFocus", {}}));
}

TEST_F(CrashReportTest, AnExceptionWithoutAddressesGetsTheStackOfTheHandlingThread)
{
    const QString report = reportOf({"N", "R", {}});
    EXPECT_TRUE(report.contains(
        "AnExceptionWithoutAddressesGetsTheStackOfTheHandlingThread_Test::TestBody()\r"))
        << report.toStdString();
}

TEST_F(CrashReportTest, HasNameAndReasonBetweenCarriageReturns)
{
    const QString report = reportOf({"N", "R", {nullptr, nullptr}});
    // Two addresses without a symbol, each an empty name.
    EXPECT_EQ(report, head("N", "R") + "\r\r");
    EXPECT_FALSE(report.contains(u'\n'));
}

TEST_F(CrashReportTest, AnExceptionThatLeavesASlotIsReported)
{
    QPushButton button("Slip");
    bool goesOn = false;
    QObject::connect(&button, &QPushButton::clicked, &button, [&] {
        if (!goesOn)
            throwInASlot();
    });
    button.show();
    ASSERT_TRUE(waitUntil([&] { return button.isActiveWindow(); }));
    Hands::click(&button);
    const QString report = shown();
    EXPECT_TRUE(report.startsWith(head("std::runtime_error", "the slot slipped") +
                                  "(anonymous namespace)::throwInASlot()"))
        << report.toStdString();
    EXPECT_TRUE(report.contains("CrashReportTest_AnExceptionThatLeavesASlotIsReported_Test"))
        << report.toStdString();
    EXPECT_TRUE(report.contains("Application::notify(QObject*, QEvent*)\r"))
        << report.toStdString();
    EXPECT_TRUE(report.contains("\rmain\r")) << report.toStdString();
    EXPECT_TRUE(report.endsWith(u'\r'));

    // The program goes on.
    goesOn = true;
    close();
    Hands::click(&button);
    EXPECT_TRUE(staysAway());
}

TEST_F(CrashReportTest, AnExceptionThatLeavesAJobCancelsIt)
{
    SilentWindow window;
    Mailbox mailbox;
    bool ended = false;
    const Config config;
    ExportWorker worker(
        nullptr, config, window, mailbox, [](double) {}, [&] { ended = true; }, throwInAJob);
    ASSERT_TRUE(waitUntil([&] { return ended; }));
    EXPECT_EQ(window.told, QStringList({"begin", "canceled"}));
    const QString report = shown();
    EXPECT_TRUE(report.startsWith(head("NSRangeException", "4 bytes at 13 of 16") +
                                  "(anonymous namespace)::throwInAJob(JobContext const&)"))
        << report.toStdString();
    EXPECT_TRUE(report.contains("ExportWorker::ExportWorker")) << report.toStdString();
}

TEST_F(CrashReportTest, AnExceptionThatLeavesAThreadsWorkIsReported)
{
    PatientThread::alone(throwInAThread);
    const QString report = shown();
    EXPECT_TRUE(report.startsWith(head("int", "") + "(anonymous namespace)::throwInAThread()"))
        << report.toStdString();
    EXPECT_TRUE(report.contains("Crew::start")) << report.toStdString();
}

TEST_F(CrashReportTest, ReportsAreShownOneAfterTheOther)
{
    for (const QString reason : {"first", "second", "second"})
        handler.shouldHandleException({"N", reason, {nullptr}});
    EXPECT_TRUE(shown().contains("first"));
    close();
    EXPECT_TRUE(shown().contains("second"));
    close();
    EXPECT_TRUE(staysAway());
}

TEST_F(CrashReportTest, AFaultThatNeverEndsDoesNotFillTheQueue)
{
    for (int i = 0; i < 1000; ++i)
        handler.shouldHandleException({"N", QString::number(i), {nullptr}});
    int count = 0;
    for (; alert() || !staysAway(); ++count)
        close();
    EXPECT_LE(count, 10);
}

TEST_F(CrashReportTest, AnExceptionThatIsThrownOnItsWayOutIsNotMistakenForIt)
{
    struct Noisy {
        ~Noisy()
        {
            try {
                throw std::logic_error("on the way");
            } catch (const std::logic_error&) { // NOLINT(bugprone-empty-catch): that is its noise
            }
        }
    };
    EXPECT_FALSE(Fault::guard([] {
        const Noisy noisy;
        throwInASlot();
    }));
    EXPECT_TRUE(shown().startsWith(head("std::runtime_error", "the slot slipped") +
                                   "(anonymous namespace)::throwInASlot()"));
}

TEST(FaultTest, AHandlerThatIsGoneHandlesNothing)
{
    {
        const FaultHandler handler{Address};
        EXPECT_FALSE(Fault::guard(throwInASlot));
    }
    EXPECT_THROW(Fault::guard(throwInASlot), std::runtime_error);
}

TEST(FaultTest, WithoutAHandlerTheExceptionGoesItsWay)
{
    EXPECT_THROW(Fault::guard(throwInASlot), std::runtime_error);
    EXPECT_TRUE(Fault::guard([] {}));
}
