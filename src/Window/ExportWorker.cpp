#include "Window/ExportWorker.h"

#include "Device/Device.h"
#include "Export/ExportJob.h"
#include "Base/Mailbox.h"

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

ExportWorker::ExportWorker(std::shared_ptr<Device> device, const Config& config, ExportHost& window,
                           Mailbox& mailbox, ShowChunk showChunk, Body body)
    : _config(config)
    , _window(window)
    , _mailbox(mailbox)
    , _showChunk(std::move(showChunk))
    , _report(std::make_unique<ExportReport>())
    , _thread([this, device = std::move(device), body = std::move(body)] {
        ExportJob job(device, _config, *this, *_report, _toStop);
        body(job);
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
    if (_toStop)
        return false;
    // One letter at a time: a fast copy has far more chunks than anybody could look at.
    _progress->value = progress;
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
ExportWorker::ask(std::function<std::optional<Answer>(ExportHost& window)> put)
{
    const auto question = std::make_shared<Question<Answer>>();
    _mailbox.post([question, put = std::move(put), &window = _window] {
        {
            const std::lock_guard lock(question->mutex);
            if (question->withdrawn) // the job that asked is gone
                return;
        }
        std::optional<Answer> answer = put(window);
        const std::lock_guard lock(question->mutex);
        question->answer = std::move(answer);
        question->done = true;
        question->answered.notify_one();
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

void ExportWorker::showFinish(bool canceled, bool alert)
{
    _mailbox.post([canceled, alert, &window = _window] { window.showFinish(canceled, alert); });
}

std::optional<ClashAnswer> ExportWorker::askClash(const QString& path)
{
    return ask<ClashAnswer>([path](ExportHost& window) { return window.askClash(path); });
}

std::optional<bool> ExportWorker::checkToiTunes()
{
    return ask<bool>([](ExportHost& window) { return window.checkToiTunes(); });
}

void ExportWorker::exportToiTunes(const QString& path, const std::vector<Playlist*>& playlists)
{
    // On this thread: another application may take its time to answer.
    _window.exportToiTunes(path, playlists);
}
