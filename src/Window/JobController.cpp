#include "Window/JobController.h"

#include "Base/Program.h"
#include "Device/Device.h"
#include "Export/ExportJob.h"
#include "Export/MusicHandOver.h"
#include "Export/PlayJob.h"
#include "Platform/Notifier.h"
#include "Window/Dialogs/Alert.h"
#include "Window/Dialogs/CopyRuleWindow.h"
#include "Window/Dialogs/ExportModeWindow.h"
#include "Window/MainWindow.h"
#include "Window/StatusBar.h"

#include <QThread>

namespace
{
constexpr qint64 LongJobMilliseconds = 10'000;
} // namespace

JobController::JobController(MainWindow& window, Notifier& notifier)
    : QObject(&window)
    , _window(window)
    , _notifier(notifier)
{
}

JobController::~JobController()
{
    // Copies must not ask a worker that is on its way out.
    if (_worker)
        _worker->requestStop();
    _worker.reset();
    _copying = nullptr;
}

void JobController::exportTracks(const std::shared_ptr<Device>& device, std::vector<Track*> tracks)
{
    startExport(device, [tracks = std::move(tracks)](const JobContext& job, ExportReport& report) {
        ExportJob(job.device, job.config, job.host, report, job.toStop).exportTracks(tracks);
    });
}

void JobController::exportPlaylists(const std::shared_ptr<Device>& device,
                                    std::vector<Playlist*> playlists)
{
    startExport(device, [playlists = std::move(playlists)](const JobContext& job,
                                                           ExportReport& report) {
        ExportJob(job.device, job.config, job.host, report, job.toStop).exportPlaylists(playlists);
    });
}

void JobController::exportPhotos(const std::shared_ptr<Device>& device, std::vector<Photo*> photos)
{
    startExport(device, [photos = std::move(photos)](const JobContext& job, ExportReport& report) {
        ExportJob(job.device, job.config, job.host, report, job.toStop).exportPhotos(photos);
    });
}

void JobController::play(const std::shared_ptr<Device>& device, Track* track)
{
    _isPlaying = true;
    start(device, [track](const JobContext& job) {
        PlayJob(job.device, job.host, job.toStop).doPlay(*track);
    });
}

void JobController::startExport(const std::shared_ptr<Device>& device,
                                std::function<void(const JobContext&, ExportReport&)> body)
{
    if (isBusy()) {
        // Started from a menu; the button would have stopped the job instead.
        Alert::show(_window, QStringLiteral("_alertBusy"), Program::briefName(),
                    tr("An export is running. Stop it, or wait for its end."));
        return;
    }
    _isPlaying = false;
    _pendingReport = std::make_unique<ExportReport>();
    _handOver = std::make_unique<MusicHandOver>(*_pendingReport);
    start(device, [body = std::move(body), report = _pendingReport.get()](const JobContext& job) {
        body(job, *report);
    });
}

void JobController::start(const std::shared_ptr<Device>& device, ExportWorker::Body body)
{
    _deviceGone = false;
    _worker = std::make_unique<ExportWorker>(
        device, Config::instance(), static_cast<JobWindow&>(*this), _mailbox,
        [this](double progress) { showLevel(progress); },
        [this] {
            _copying = nullptr;
            _worker.reset();
            _handOver.reset();
            _pendingReport.reset();
            Q_EMIT idle();
        },
        std::move(body));
    _copying = _worker.get();
}

void JobController::requestStop()
{
    if (_worker)
        _worker->requestStop();
}

void JobController::deviceDisconnected(const Device& device)
{
    if (!_worker || _worker->device().get() != &device)
        return;
    _deviceGone = true;
    requestStop();
}

void JobController::stopForQuit()
{
    _quitting = true;
    requestStop();
}

bool JobController::exported(double progress)
{
    // Readers copy their databases on the window's thread; that is no part of the job.
    if (QThread::currentThread() == thread())
        return true;
    ExportWorker* worker = _copying;
    return !worker || worker->exported(progress);
}

void JobController::showBegin(int count)
{
    if (_pendingReport)
        _report = std::move(_pendingReport);
    _isExport = true;
    _count = count;
    _sinceBegin.start();
    StatusBar& status = _window.status();
    status.setExporting(true);
    status.setFailureLine({});
    status.setInfo(QStringLiteral("Begin export..."));
    status.showLevel(count);
    _notifier.keepAwake(tr("Media are being copied from a device"));
    Q_EMIT isExportChanged();
}

void JobController::showProgress(const QString& text, double progress)
{
    _window.status().setInfo(text);
    showLevel(progress);
}

void JobController::showLevel(double progress)
{
    if (!_isExport)
        return;
    _window.status().setLevel(progress);
    _notifier.showProgress(_count > 0 ? progress / _count : 0);
}

void JobController::showItem(const ExportItem& /*item*/) {}

void JobController::showFinish(bool canceled, bool alert)
{
    _isExport = false;
    StatusBar& status = _window.status();
    status.setExporting(false);
    status.hideLevel();
    _notifier.hideProgress();
    _notifier.letSleep();
    status.setInfo(canceled ? QStringLiteral("Export Canceled!")
                            : QStringLiteral("Export Finished!"));
    if (!_isPlaying)
        showFailures();
    Q_EMIT isExportChanged();
    if (alert && !_quitting)
        tellOutcome(canceled);
}

void JobController::showFailures()
{
    if (!_report)
        return;
    QStringList lines;
    if (_report->notCopiedCount() > 0)
        lines.append(tr("%1 of %2 items were not copied")
                         .arg(_report->notCopiedCount())
                         .arg(_report->copyCount()));
    if (_deviceGone && !lines.isEmpty())
        lines.front() = tr("The device was disconnected: %1").arg(lines.front());
    if (_report->handOverCount() > 0)
        lines.append(
            tr("%1 times the music application did not take a file").arg(_report->handOverCount()));
    if (!lines.isEmpty())
        _window.status().setFailureLine(lines.join(QStringLiteral("; ")));
}

void JobController::tellOutcome(bool canceled)
{
    const QString text =
        canceled ? QStringLiteral("Export canceled!") : QStringLiteral("Export finished!");
    if (!_window.isActiveWindow() && _sinceBegin.elapsed() > LongJobMilliseconds)
        _notifier.jobFinished(text, _window.status().failureLine());
    Alert::show(_window, QStringLiteral("_alertFinish"), text, text);
}

void JobController::askClash(const QString& path, const Reply<ClashAnswer>& reply)
{
    auto* question = new CopyRuleWindow(&_window);
    question->ask(path, [reply](const std::optional<ClashAnswer>& answer) {
        if (answer && answer->remember) {
            // The job remembers it in its own copy of the settings; this is the person's.
            Config::instance().setCopyRule(answer->rule);
            Config::instance().save();
        }
        reply(answer);
    });
}

void JobController::askForHandOver(const Reply<bool>& reply)
{
    (new ExportModeWindow(&_window))->askForHandOver(reply);
}

void JobController::handOver(const QString& path, const std::vector<Playlist*>& playlists)
{
    const ExportWorker* worker = _copying;
    _handOver->handOver(path, playlists, [worker] { return worker && worker->isStopRequested(); });
}
