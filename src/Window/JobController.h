#pragma once

#include "Base/Mailbox.h"
#include "Window/ExportWorker.h"

#include <QElapsedTimer>
#include <QObject>

#include <atomic>

class Device;
class MainWindow;
class MusicHandOver;
class Notifier;
struct Photo;
struct Track;

/// The job of the window: starts one at a time, shows how it goes, puts its questions to the
/// person, and keeps the report of the last export.
class JobController final : public QObject, private JobWindow
{
    Q_OBJECT
public:
    /// Both outlive the controller.
    JobController(MainWindow& window, Notifier& notifier);
    ~JobController() override;

    void exportTracks(const std::shared_ptr<Device>& device, std::vector<Track*> tracks);
    void exportPlaylists(const std::shared_ptr<Device>& device, std::vector<Playlist*> playlists);
    void exportPhotos(const std::shared_ptr<Device>& device, std::vector<Photo*> photos);
    /// Plays a track of the device.
    void play(const std::shared_ptr<Device>& device, Track* track);

    /// A job shows its progress now.
    [[nodiscard]] bool isExport() const { return _isExport; }
    /// A job is under way, even if it is only asking something yet.
    [[nodiscard]] bool isBusy() const { return _worker != nullptr; }
    /// The job ends at its next chunk.
    void requestStop();
    /// The job's device is gone: nothing more can be copied from it.
    void deviceDisconnected(const Device& device);
    /// Stops the job, and `idle` follows without any further word to the person.
    void stopForQuit();
    /// For the device's delegate, on the thread that copies: false when the copy is to stop.
    bool exported(double progress);

    /// The report of the last export; null before the first.
    [[nodiscard]] const ExportReport* report() const { return _report.get(); }

Q_SIGNALS:
    /// A job began to show its progress, or came to its end.
    void isExportChanged();
    /// No job is under way any more.
    void idle();

private:
    void start(const std::shared_ptr<Device>& device, ExportWorker::Body body);
    void startExport(const std::shared_ptr<Device>& device,
                     std::function<void(const JobContext&, ExportReport&)> body);
    void showLevel(double progress);
    void tellOutcome(bool canceled);
    void showFailures();

    void showBegin(int count) override;
    void showProgress(const QString& text, double progress) override;
    void showItem(const ExportItem& item) override;
    void showFinish(bool canceled, bool alert) override;
    void askClash(const QString& path, const Reply<ClashAnswer>& reply) override;
    void askForHandOver(const Reply<bool>& reply) override;
    void handOver(const QString& path, const std::vector<Playlist*>& playlists) override;

    MainWindow& _window;
    Notifier& _notifier;
    bool _isExport = false;
    bool _isPlaying = false;
    bool _deviceGone = false;
    bool _quitting = false;
    int _count = 0;
    QElapsedTimer _sinceBegin;
    std::unique_ptr<ExportReport> _report;
    /// Of a job that has not begun: until then the last report stays.
    std::unique_ptr<ExportReport> _pendingReport;
    /// Of the running export; used on its thread, which ends before it.
    std::unique_ptr<MusicHandOver> _handOver;
    Mailbox _mailbox;
    std::unique_ptr<ExportWorker> _worker;
    /// The worker whose copies ask whether to go on; read on its thread.
    std::atomic<ExportWorker*> _copying = nullptr;
};
