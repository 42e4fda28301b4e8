#include "Window/ExportWorker.h"

#include "Base/Fault.h"
#include "Base/Mailbox.h"
#include "Base/PathName.h"
#include "Device/DeviceDelegate.h"
#include "Export/ExportJob.h"
#include "Export/ExportParts.h"
#include "support/EventLoop.h"
#include "support/PlayerFixture.h"

#include <stdexcept>
#include <thread>

namespace
{
constexpr qsizetype Chunk = 1024 * 1024;

/// A window in all but its widgets: it answers on its own thread, and its worker's copies ask it
/// whether to go on.
class WindowStandIn final : public JobWindow, public DeviceDelegate
{
public:
    WindowStandIn() { Device::setDelegate(this); }
    ~WindowStandIn() override { Device::setDelegate(nullptr); }

    void showBegin(int count) override { note(QString("begin %1").arg(count)); }
    void showProgress(const QString& text, double /*progress*/) override { note(text); }
    void showItem(const ExportItem& item) override { note(ExportItem::resultName(item.result)); }
    void showNotPlayed(const QString& title, const Failure& /*why*/) override
    {
        note("not played " + title);
    }
    void showFinish(bool canceled, bool /*alert*/) override
    {
        note(canceled ? "canceled" : "finished");
    }
    void askClash(const QString& path, const Reply<ClashAnswer>& reply) override
    {
        note("clash " + PathName::lastComponent(path));
        reply(clashAnswer);
    }
    void askForHandOver(const Reply<bool>& reply) override
    {
        note("mode?");
        reply(false);
    }
    void handOver(const QString& /*path*/, const std::vector<Playlist*>&) override {}
    bool exported(double progress) override { return !worker || worker.load()->exported(progress); }

    void note(const QString& line)
    {
        EXPECT_EQ(std::this_thread::get_id(), _home);
        told.append(line);
        if (line == throwsAt)
            throw std::runtime_error("window");
    }

    QStringList told;
    QString throwsAt;
    bool ended = false;
    double shown = 0;
    std::optional<ClashAnswer> clashAnswer = ClashAnswer{SkipRule, false};
    std::atomic<ExportWorker*> worker = nullptr;

private:
    std::thread::id _home = std::this_thread::get_id();
};

class ExportWorkerTest : public PlayerFixture
{
protected:
    ExportWorkerTest() { Device::setDelegate(&window); }
    ~ExportWorkerTest() override { window.worker = nullptr; }

    void start()
    {
        const std::vector<Track*> tracks = connect().trackDb()->tracks();
        start([tracks, this](const JobContext& job) {
            ExportJob(job.device, job.config, job.host, report, job.toStop).exportTracks(tracks);
        });
    }
    void start(const ExportWorker::Body& body)
    {
        worker = std::make_unique<ExportWorker>(
            device, config, window, mailbox, [this](double value) { window.shown = value; },
            [this] { window.ended = true; }, body);
        window.worker = worker.get();
    }
    bool finishes()
    {
        return waitUntil([this] { return window.ended; });
    }

    WindowStandIn window;
    Mailbox mailbox;
    std::unique_ptr<ExportWorker> worker;
};
} // namespace

TEST_F(ExportWorkerTest, TellsTheWindowOnItsThreadInOrder)
{
    add("One", "first");
    add("Two", "second");
    start();
    ASSERT_TRUE(finishes());
    EXPECT_EQ(window.told, QStringList({"mode?", "begin 2", "Export One...", "copied",
                                        "Export Two...", "copied", "finished"}));
    EXPECT_EQ(Files::read(out("Music/Artist/Album/Two.mp3")), "second");
    EXPECT_EQ(report.items().size(), 2U);
}

TEST_F(ExportWorkerTest, WaitsForTheAnswerOfTheWindow)
{
    add("One", "first");
    Files::write(out("Music/Artist/Album/One.mp3"), "old");
    config.setCopyRule(AskRule);
    start();
    ASSERT_TRUE(finishes());
    EXPECT_TRUE(window.told.contains("clash One.mp3"));
    EXPECT_TRUE(window.told.contains("skipped"));
    EXPECT_EQ(Files::read(out("Music/Artist/Album/One.mp3")), "old");
}

TEST_F(ExportWorkerTest, StopsAtTheNextChunk)
{
    for (int i = 0; i < 40; ++i)
        add(QString("Track %1").arg(i), Files::content(4 * Chunk));
    start();
    ASSERT_TRUE(waitUntil([this] { return window.told.contains("copied"); }));
    worker->requestStop();
    ASSERT_TRUE(finishes());
    EXPECT_EQ(window.told.last(), "canceled");
    EXPECT_EQ(report.items().size(), 40U);
    EXPECT_EQ(report.items().back().result, ExportItem::Result::Stopped);
}

TEST_F(ExportWorkerTest, ShowsHowFarTheCopyIs)
{
    add("One", Files::content(8 * Chunk));
    start();
    ASSERT_TRUE(finishes());
    EXPECT_TRUE(waitUntil([this] { return window.shown == 1.0; }));
}

TEST_F(ExportWorkerTest, ShowsHowFarAJobOfSeveralPartsIs)
{
    for (int i = 0; i < 3; ++i)
        add(QString("Track %1").arg(i), Files::content(2 * Chunk));
    const std::vector<Track*> tracks = connect().trackDb()->tracks();
    std::vector<SectionItems> parts;
    for (Track* track : tracks)
        parts.push_back({{track}, {}, {}});
    start([parts, this](const JobContext& job) {
        ExportParts(job.device, job.config, job.host, report, job.toStop).run(parts);
    });
    ASSERT_TRUE(finishes());
    EXPECT_EQ(window.told.first(), "mode?");
    EXPECT_EQ(window.told[1], "begin 3");
    EXPECT_TRUE(waitUntil([this] { return window.shown == 3.0; }));
}

TEST_F(ExportWorkerTest, EndsWhenTheWindowThrowsAtItsWords)
{
    add("One", "first");
    int faults = 0;
    Fault::setHandler([&] { ++faults; });
    window.throwsAt = "copied";
    start();
    EXPECT_TRUE(finishes()) << "a lost word of the end would keep the program busy for ever";
    Fault::setHandler({});
    EXPECT_EQ(faults, 1);
    EXPECT_EQ(window.told.last(), "finished");
}

TEST_F(ExportWorkerTest, EndsWhileAQuestionIsOpen)
{
    add("One", "first");
    Files::write(out("Music/Artist/Album/One.mp3"), "old");
    start();
    // Nobody runs the event loop, so the first question is never answered; the end of the
    // worker must not wait for it.
    window.worker = nullptr;
    worker.reset();
    QCoreApplication::processEvents();
    EXPECT_TRUE(window.told.isEmpty());
}

TEST_F(ExportWorkerTest, OutlivesTheDepartureOfItsDevice)
{
    for (int i = 0; i < 20; ++i)
        add(QString("Track %1").arg(i), Files::content(2 * Chunk));
    start();
    ASSERT_TRUE(waitUntil([this] { return window.told.contains("copied"); }));
    device.reset(); // the window lets go of it; the worker's own share keeps it alive
    QDir(path("player")).removeRecursively();
    ASSERT_TRUE(finishes());
    EXPECT_EQ(window.told.last(), "finished");
    EXPECT_EQ(report.items().size(), 20U);
}
