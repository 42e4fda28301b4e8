#pragma once

#include "Export/Config.h"
#include "Export/ExportHost.h"

#include <atomic>
#include <functional>
#include <memory>
#include <stop_token>
#include <thread>

class Device;
class ExportJob;
class Mailbox;

/// Runs one export on a thread of its own and stands between it and the window: what the job
/// tells reaches the window's host through the mailbox, on the window's thread, and what the job
/// asks waits for the answer from there. Made and destroyed on the window's thread; destroying it
/// stops the job and waits for its end, which is never further away than one chunk.
///
/// The thread works with a copy of the settings. A rule that is to be remembered comes back with
/// the answer that the window gave, so the window stores it.
class ExportWorker final : private ExportHost
{
public:
    /// What the job does, on the job's thread.
    using Body = std::function<void(ExportJob& job)>;
    /// Takes the progress of the copy, on the window's thread.
    using ShowChunk = std::function<void(double progress)>;

    /// Starts at once. `window` and `mailbox` outlive the worker, and so does what `showChunk`
    /// refers to.
    ExportWorker(std::shared_ptr<Device> device, const Config& config, ExportHost& window,
                 Mailbox& mailbox, ShowChunk showChunk, Body body);
    ~ExportWorker() override;

    /// The job ends at its next chunk.
    void requestStop();
    [[nodiscard]] bool isStopRequested() const { return _toStop; }
    /// Called by the device's delegate, on the job's thread, for each chunk: false when the copy
    /// is to stop. Shows the progress on the window's thread, as often as that gets to it.
    bool exported(double progress);
    /// All that the job reported. Only after `showFinish` reached the window, or when the job
    /// started nothing.
    [[nodiscard]] const ExportReport& report() const { return *_report; }

private:
    /// The latest progress, and whether a letter about it is on its way.
    struct Progress {
        std::atomic<double> value = 0;
        std::atomic<bool> posted = false;
    };

    template <typename Answer>
    std::optional<Answer> ask(std::function<std::optional<Answer>(ExportHost& window)> question);

    void showBegin(int count) override;
    void showProgress(const QString& text, double progress) override;
    void showItem(const ExportItem& item) override;
    void showFinish(bool canceled, bool alert) override;
    std::optional<ClashAnswer> askClash(const QString& path) override;
    std::optional<bool> checkToiTunes() override;
    void exportToiTunes(const QString& path, const std::vector<Playlist*>& playlists) override;

    Config _config;
    ExportHost& _window;
    Mailbox& _mailbox;
    ShowChunk _showChunk;
    std::unique_ptr<ExportReport> _report;
    std::shared_ptr<Progress> _progress = std::make_shared<Progress>();
    std::atomic<bool> _toStop = false;
    std::stop_source _ended; ///< no answer is waited for any more
    std::jthread _thread;    // last: it ends before what it uses goes
};
