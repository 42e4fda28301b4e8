#pragma once

#include "Base/Mailbox.h"
#include "Device/SectionItems.h"
#include "Window/ExportWorker.h"
#include "Window/FinishedExport.h"

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
    /// Several parts as one job, with one report.
    void exportParts(const std::shared_ptr<Device>& device, std::vector<SectionItems> parts);
    /// Plays a track of the device.
    void play(const std::shared_ptr<Device>& device, Track* track);

    /// A job shows its progress now.
    [[nodiscard]] bool isExport() const { return _isExport; }
    /// A job is under way, even if it is only asking something yet.
    [[nodiscard]] bool isBusy() const { return _worker != nullptr; }
    /// A job is under way that showed its progress only a moment ago, or does not show any yet: a
    /// second press of a key that began it is not meant for it.
    [[nodiscard]] bool hasJustBegun() const;
    /// The job ends at its next chunk.
    void requestStop();
    /// The job's device is gone: nothing more can be copied from it.
    void deviceDisconnected(const Device& device);
    /// Stops the job, and `idle` follows without any further word to the person.
    void stopForQuit();
    /// For the device's delegate, on the thread that copies: false when the copy is to stop.
    bool exported(double progress);

    /// The last export that came to its end; null before the first.
    [[nodiscard]] const std::shared_ptr<const FinishedExport>& lastExport() const { return _last; }
    /// Its report; null before the first.
    [[nodiscard]] const ExportReport* report() const
    {
        return _last ? _last->report.get() : nullptr;
    }

Q_SIGNALS:
    /// A job began to show its progress, or came to its end.
    void isExportChanged();
    /// No job is under way any more.
    void idle();
    /// The person wants to see the report of the last export.
    void reportWanted();

private:
    void start(const std::shared_ptr<Device>& device, ExportWorker::Body body);
    void startExport(const std::shared_ptr<Device>& device,
                     std::function<void(const JobContext&, ExportReport&)> body);
    void showLevel(double progress);
    void keepReport(bool canceled);
    void tellOutcome();
    void showFailures();
    void remember(const ClashAnswer& answer);

    void showBegin(int count) override;
    void showProgress(const QString& text, double progress) override;
    void showItem(const ExportItem& item) override;
    void showNotPlayed(const QString& title, const Failure& why) override;
    void showFinish(bool canceled, bool alert) override;
    void askClash(const QString& path, const Reply<ClashAnswer>& reply) override;
    void askForHandOver(const Reply<bool>& reply) override;
    void handOver(const QString& path, const std::vector<Playlist*>& playlists) override;

    MainWindow& _window;
    Notifier& _notifier;
    bool _isExport = false;
    bool _isPlaying = false;
    bool _quitting = false;
    int _count = 0;
    QElapsedTimer _sinceBegin;
    QString _notPlayed; ///< why, in words
    QString _whyGone;   ///< null while the device of the job is there
    std::shared_ptr<const FinishedExport> _last;
    /// Of the export under way, and filled in on its thread. Until that has come to its end the
    /// last one stays what there is to see.
    std::shared_ptr<ExportReport> _running;
    // What the questions were answered last, which is what they propose next.
    int _lastRule = KeepBothRule;
    bool _lastHandsOver = false;
    /// Of the running export; used on its thread, which ends before it.
    std::unique_ptr<MusicHandOver> _handOver;
    Mailbox _mailbox;
    std::unique_ptr<ExportWorker> _worker;
    /// The worker whose copies ask whether to go on; read on its thread.
    std::atomic<ExportWorker*> _copying = nullptr;
};
