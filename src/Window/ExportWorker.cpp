#include "Window/ExportWorker.h"

#include "Base/Fault.h"
#include "Base/Mailbox.h"
#include "Device/Device.h"

#include <condition_variable>
#include <mutex>

namespace
{
/// A question under way. It belongs to both threads, as either may be done with it first.
template <typename Answer>
struct Question {
    std::mutex mutex;
    std::condition_variable_any answered;
    bool done = false;
    bool withdrawn = false;
    std::optional<Answer> answer;
};
} // namespace

ExportWorker::ExportWorker(const std::shared_ptr<Device>& device, const Config& config,
                           JobWindow& window, Mailbox& mailbox, ShowChunk showChunk, Ended ended,
                           Body body)
    : _device(device)
    , _config(config)
    , _window(window)
    , _mailbox(mailbox)
    , _showChunk(std::move(showChunk))
    , _thread([this, ended = std::move(ended), body = std::move(body)] {
        // The person sees the fault's report; the job is over like one that was stopped.
        if (!Fault::guard([&] { body({_device, _config, *this, _toStop}); }) && !_finishShown)
            showFinish(true, false);
        _mailbox.post(ended);
    })
{
}

ExportWorker::~ExportWorker()
{
    requestStop();
    _ended.request_stop();
}

void ExportWorker::requestStop()
{
    _toStop = true;
}

bool ExportWorker::exported(double progress)
{
    if (_toStop || _deviceGone)
        return false;
    // One letter at a time: a fast copy has far more chunks than anybody could look at.
    _progress->value = _before + progress;
    if (!_progress->posted.exchange(true)) {
        _mailbox.post([shared = _progress, show = _showChunk] {
            shared->posted = false;
            show(shared->value);
        });
    }
    return true;
}

template <typename Answer>
std::optional<Answer>
ExportWorker::ask(std::function<void(JobWindow& window, const JobWindow::Reply<Answer>& reply)> put)
{
    const auto question = std::make_shared<Question<Answer>>();
    _mailbox.post([question, put = std::move(put), &window = _window] {
        {
            const std::lock_guard lock(question->mutex);
            if (question->withdrawn) // the job that asked is gone
                return;
        }
        put(window, [question](const std::optional<Answer>& answer) {
            const std::lock_guard lock(question->mutex);
            question->answer = answer;
            question->done = true;
            question->answered.notify_one();
        });
    });
    std::unique_lock lock(question->mutex);
    // Whoever closes the window waits for this thread: it must not wait for the window then.
    if (!question->answered.wait(lock, _ended.get_token(), [&] { return question->done; }))
        question->withdrawn = true;
    return question->answer;
}

void ExportWorker::showBegin(int count)
{
    _mailbox.post([count, &window = _window] { window.showBegin(count); });
}

void ExportWorker::showProgress(const QString& text, double progress)
{
    _mailbox.post([text, progress, &window = _window] { window.showProgress(text, progress); });
}

void ExportWorker::showItem(const ExportItem& item)
{
    _mailbox.post([item, &window = _window] { window.showItem(item); });
}

void ExportWorker::showPart(int before)
{
    _before = before;
}

void ExportWorker::showNotPlayed(const QString& title, const Failure& why)
{
    _mailbox.post([title, why, &window = _window] { window.showNotPlayed(title, why); });
}

void ExportWorker::showFinish(bool canceled, bool alert)
{
    _finishShown = true;
    _mailbox.post([canceled, alert, &window = _window] { window.showFinish(canceled, alert); });
}

std::optional<ClashAnswer> ExportWorker::askClash(const QString& path)
{
    return ask<ClashAnswer>(
        [path](JobWindow& window, const auto& reply) { window.askClash(path, reply); });
}

std::optional<bool> ExportWorker::askForHandOver()
{
    return ask<bool>([](JobWindow& window, const auto& reply) { window.askForHandOver(reply); });
}

void ExportWorker::handOver(const QString& path, const std::vector<Playlist*>& playlists)
{
    _window.handOver(path, playlists);
}
