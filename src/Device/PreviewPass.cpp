#include "Device/PreviewPass.h"

#include "Base/Fault.h"

#include <utility>

namespace
{
/// Asking takes longer than a small preview, and in this time none can fill the memory.
constexpr auto TimeBetweenQuestions = std::chrono::milliseconds(5);
} // namespace

PreviewPass::PreviewPass(const std::vector<Photo*>& photos, Step step, MemoryProbe memory)
    : _photos(photos)
    , _step(std::move(step))
    , _memory(std::move(memory))
{
    if (photos.empty())
        _finished = true;
    else
        _thread = std::jthread([this](const std::stop_token& stop) { run(stop); });
}

void PreviewPass::wait()
{
    if (_thread.joinable())
        _thread.join();
}

void PreviewPass::run(const std::stop_token& stop)
{
    for (Photo* photo : _photos) {
        if (stop.stop_requested() || isShortOfMemory())
            break;
        makePreview(*photo);
        ++_done;
    }
    _finished = true;
}

/// A photo whose preview fails keeps none. A program that shows faults hears of it; in one that
/// does not, no picture is worth the end of the program.
void PreviewPass::makePreview(Photo& photo)
{
    try {
        Fault::guard([&] { _step(photo); });
    } catch (...) {
        return;
    }
}

bool PreviewPass::isShortOfMemory()
{
    const auto now = std::chrono::steady_clock::now();
    if (_done > 0 && now - _askedForMemory < TimeBetweenQuestions)
        return false;
    _askedForMemory = now;
    return _memory() < LeastMemory;
}
