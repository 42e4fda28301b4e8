#pragma once

#include "Platform/Host.h"

#include <atomic>
#include <chrono>
#include <cstddef>
#include <functional>
#include <thread>
#include <vector>

struct Photo;

/// Makes the previews of a reader's photos, one after another in their order, on a thread of its
/// own. It ends early when the computer runs out of memory, and at once, with the photo it is at,
/// when it is destroyed: the photos, and the device they are read from, must outlive it.
///
/// There are no calls back: whoever shows previews asks from time to time how many are done.
class PreviewPass
{
public:
    /// Sets the preview of one photo. Runs on the thread of the pass.
    using Step = std::function<void(Photo& photo)>;
    /// Free memory in MiB.
    using MemoryProbe = std::function<double()>;

    /// Below so much free memory, in MiB, no further preview is made.
    static constexpr double LeastMemory = 200;

    PreviewPass(const std::vector<Photo*>& photos, Step step,
                MemoryProbe memory = Host::availableMemory);
    ~PreviewPass() = default; // stops and waits
    PreviewPass(const PreviewPass&) = delete;
    PreviewPass& operator=(const PreviewPass&) = delete;

    /// How many photos, from the first on, have been dealt with. Any thread.
    [[nodiscard]] std::size_t done() const { return _done; }
    /// Whether the pass is over, with or without all of the photos done. Any thread.
    [[nodiscard]] bool finished() const { return _finished; }
    /// Asks the pass to end with the photo it is at, and does not wait for it. Any thread.
    void stop() { _thread.request_stop(); }
    /// Waits until the pass is over. On the owner's thread.
    void wait();

private:
    void run(const std::stop_token& stop);
    void makePreview(Photo& photo);
    bool isShortOfMemory();

    const std::vector<Photo*>& _photos;
    Step _step;
    MemoryProbe _memory;
    std::chrono::steady_clock::time_point _askedForMemory;
    std::atomic<std::size_t> _done = 0;
    std::atomic<bool> _finished = false;
    std::jthread _thread; // last: it uses all of the above
};
