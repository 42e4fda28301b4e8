#pragma once

#include "Base/Failure.h"
#include "Export/Config.h"
#include "Export/ExportHost.h"

#include <atomic>
#include <functional>
#include <memory>
#include <stop_token>
#include <thread>

class Device;
class Mailbox;

/// Whom an export worker tells how its job goes, and asks; on the window's thread but for the
/// hand-over to other applications. A question is answered whenever the person has answered:
/// nothing waits here.
class JobWindow
{
public:
    template <typename Answer>
    using Reply = std::function<void(const std::optional<Answer>& answer)>;

    JobWindow() = default;
    virtual ~JobWindow() = default;
    JobWindow(const JobWindow&) = delete;
    JobWindow& operator=(const JobWindow&) = delete;

    virtual void showBegin(int count) = 0;
    virtual void showProgress(const QString& text, double progress) = 0;
    virtual void showItem(const ExportItem& item) = 0;
    virtual void showNotPlayed(const QString& title, const Failure& why) = 0;
    virtual void showFinish(bool canceled, bool alert) = 0;
    virtual void askClash(const QString& path, const Reply<ClashAnswer>& reply) = 0;
    virtual void askForHandOver(const Reply<bool>& reply) = 0;
    /// On the job's thread: another application may take its time to answer.
    virtual void handOver(const QString& path, const std::vector<Playlist*>& playlists) = 0;
};

/// What a job works with, on its own thread. All of it outlives the job.
struct JobContext {
    std::shared_ptr<Device> device;
    Config& config; ///< the job's own copy of the settings
    ExportHost& host;
    std::atomic<bool>& toStop; ///< set from outside, or by a job of several parts that is given up
};

/// Runs one job on a thread of its own and stands between it and the window: what the job tells
/// reaches the window through the mailbox, on the window's thread, and what the job asks
/// waits for the answer from there. Made and destroyed on the window's thread; destroying it
/// stops the job and waits for its end, which is never further away than one chunk.
///
/// The thread works with a copy of the settings. A rule that is to be remembered comes back with
/// the answer that the window gave, so the window stores it.
class ExportWorker final : private ExportHost
{
public:
    /// What the job does, on the job's thread. One that throws ends as a canceled job.
    using Body = std::function<void(const JobContext& context)>;
    /// Takes the progress of the copy, on the window's thread.
    using ShowChunk = std::function<void(double progress)>;
    /// Hears on the window's thread that the job is over, whether it began anything or not. It
    /// may destroy the worker.
    using Ended = std::function<void()>;

    /// Starts at once. `window` and `mailbox` outlive the worker, and so does what the two
    /// functions refer to.
    ExportWorker(const std::shared_ptr<Device>& device, const Config& config, JobWindow& window,
                 Mailbox& mailbox, ShowChunk showChunk, Ended ended, Body body);
    ~ExportWorker() override;

    /// The job ends at its next chunk.
    void requestStop();
    /// The device has gone: the copy under way ends at its next chunk, and the job finds out by
    /// itself what that means for the items it has not reached.
    void deviceHasGone() { _deviceGone = true; }
    [[nodiscard]] bool isStopRequested() const { return _toStop; }
    /// Called by the device's delegate, on the job's thread, for each chunk: false when the copy
    /// is to stop. Shows the progress on the window's thread, as often as that gets to it.
    bool exported(double progress);
    [[nodiscard]] const std::shared_ptr<Device>& device() const { return _device; }

private:
    /// The latest progress, and whether a letter about it is on its way.
    struct Progress {
        std::atomic<double> value = 0;
        std::atomic<bool> posted = false;
    };

    template <typename Answer>
    std::optional<Answer>
    ask(std::function<void(JobWindow& window, const JobWindow::Reply<Answer>& reply)> put);

    void showBegin(int count) override;
    void showProgress(const QString& text, double progress) override;
    void showItem(const ExportItem& item) override;
    void showPart(int before) override;
    void showNotPlayed(const QString& title, const Failure& why) override;
    void showFinish(bool canceled, bool alert) override;
    std::optional<ClashAnswer> askClash(const QString& path) override;
    std::optional<bool> askForHandOver() override;
    void handOver(const QString& path, const std::vector<Playlist*>& playlists) override;

    std::shared_ptr<Device> _device;
    Config _config;
    JobWindow& _window;
    Mailbox& _mailbox;
    ShowChunk _showChunk;
    std::shared_ptr<Progress> _progress = std::make_shared<Progress>();
    std::atomic<bool> _toStop = false;
    std::atomic<bool> _deviceGone = false;
    std::atomic<int> _before = 0; ///< items of the parts of the job that are done
    bool _finishShown = false;    ///< used by the thread alone
    std::stop_source _ended;      ///< no answer is waited for any more
    std::jthread _thread;         // last: it ends before what it uses goes
};
