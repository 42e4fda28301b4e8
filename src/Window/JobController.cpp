#include "Window/JobController.h"

#include "Base/Program.h"
#include "Device/Device.h"
#include "Export/ExportJob.h"
#include "Export/ExportParts.h"
#include "Export/MusicHandOver.h"
#include "Export/PlayJob.h"
#include "Platform/Notifier.h"
#include "Window/Dialogs/Alert.h"
#include "Window/Dialogs/CopyRuleWindow.h"
#include "Window/Dialogs/ExportModeWindow.h"
#include "Window/Dialogs/FinishAlert.h"
#include "Window/MainWindow.h"
#include "Window/StatusBar.h"

#include <QApplication>
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

void JobController::exportParts(const std::shared_ptr<Device>& device,
                                std::vector<SectionItems> parts)
{
    startExport(device, [parts = std::move(parts)](const JobContext& job, ExportReport& report) {
        ExportParts(job.device, job.config, job.host, report, job.toStop).run(parts);
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
    _running = std::make_shared<ExportReport>();
    _handOver = std::make_unique<MusicHandOver>(*_running);
    start(device, [body = std::move(body), report = _running](const JobContext& job) {
        body(job, *report);
    });
}

void JobController::start(const std::shared_ptr<Device>& device, ExportWorker::Body body)
{
    _notPlayed.clear();
    _whyGone = QString();
    _worker = std::make_unique<ExportWorker>(
        device, Config::instance(), static_cast<JobWindow&>(*this), _mailbox,
        [this](double progress) { showLevel(progress); },
        [this] {
            _copying = nullptr;
            _worker.reset();
            _handOver.reset();
            _running.reset();
            Q_EMIT idle();
        },
        std::move(body));
    _copying = _worker.get();
}

bool JobController::hasJustBegun() const
{
    return isBusy() && (!_isExport || _sinceBegin.elapsed() < QApplication::doubleClickInterval());
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
    const std::optional<Failure> why = device.whyGone();
    _whyGone = why ? why->words : tr("The device was disconnected");
    if (why)
        _worker->deviceHasGone();
    else
        requestStop(); // the job has no way to know
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
    _isExport = true;
    _count = count;
    _sinceBegin.start();
    StatusBar& status = _window.status();
    status.setExporting(true);
    if (!_isPlaying) // what the last export left undone is still so
        status.setFailureLine({});
    status.setInfo(tr("Begin export..."));
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

void JobController::showNotPlayed(const QString& title, const Failure& why)
{
    _notPlayed = tr("“%1” cannot be played: %2").arg(title, why.text());
}

void JobController::showFinish(bool canceled, bool alert)
{
    const bool hasBegun = std::exchange(_isExport, false);
    StatusBar& status = _window.status();
    status.setExporting(false);
    status.hideLevel();
    _notifier.hideProgress();
    _notifier.letSleep();
    QString info = canceled ? tr("Export Canceled!") : tr("Export Finished!");
    if (!_notPlayed.isEmpty())
        info += u' ' + _notPlayed;
    status.setInfo(info);
    if (!_isPlaying && hasBegun) {
        keepReport(canceled);
        showFailures();
    }
    Q_EMIT isExportChanged();
    if (alert && hasBegun && !_isPlaying && !_quitting)
        tellOutcome();
}

void JobController::keepReport(bool canceled)
{
    const Device& device = *_worker->device();
    if (const std::optional<Failure> why = device.whyGone())
        _whyGone = why->words;
    auto ended = std::make_shared<FinishedExport>();
    ended->report = _running;
    ended->problems = device.problems();
    ended->canceled = canceled;
    ended->whyGone = _whyGone;
    _last = std::move(ended);
}

void JobController::showFailures()
{
    const ExportReport& report = *_last->report;
    QStringList lines;
    if (report.notCopiedCount() > 0)
        lines.append(tr("%1 of %2 items were not copied")
                         .arg(report.notCopiedCount())
                         .arg(report.copyCount()));
    if (!_last->whyGone.isNull() && !lines.isEmpty())
        lines.front() = tr("%1: %2").arg(_last->whyGone, lines.front());
    if (report.handOverCount() > 0)
        lines.append(tr("%n time(s) the music application did not take a file", nullptr,
                        int(report.handOverCount())));
    if (!lines.isEmpty())
        _window.status().setFailureLine(lines.join(QStringLiteral("; ")));
}

void JobController::tellOutcome()
{
    if (!_window.isActiveWindow() && _sinceBegin.elapsed() > LongJobMilliseconds)
        _notifier.jobFinished(FinishAlert::title(*_last), FinishAlert::details(*_last));
    FinishAlert::show(_window, *_last, [this] { Q_EMIT reportWanted(); });
}

void JobController::askClash(const QString& path, const Reply<ClashAnswer>& reply)
{
    auto* question = new CopyRuleWindow(&_window);
    question->ask(path, _lastRule, [this, reply](const std::optional<ClashAnswer>& answer) {
        if (answer)
            remember(*answer);
        reply(answer);
    });
}

void JobController::remember(const ClashAnswer& answer)
{
    _lastRule = answer.rule;
    if (!answer.remember)
        return;
    // The job remembers it in its own copy of the settings; this is the person's.
    Config::instance().setCopyRule(answer.rule);
    Alert::showFailure(_window, QStringLiteral("_alertSettings"), Config::instance().save());
}

void JobController::askForHandOver(const Reply<bool>& reply)
{
    auto* question = new ExportModeWindow(_lastHandsOver, &_window);
    question->askForHandOver([this, reply](const std::optional<bool>& handsOver) {
        _lastHandsOver = handsOver.value_or(_lastHandsOver);
        reply(handsOver);
    });
}

void JobController::handOver(const QString& path, const std::vector<Playlist*>& playlists)
{
    const ExportWorker* worker = _copying;
    _handOver->handOver(path, playlists, [worker] { return worker && worker->isStopRequested(); });
}
