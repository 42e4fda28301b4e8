#pragma once

#include <atomic>
#include <memory>

class Device;
class ExportHost;
struct Track;

/// Plays one track of a device: copies it to a private place and opens the copy. It tells its
/// host the same as an export of one item does. On the thread that calls.
class PlayJob
{
public:
    /// `toStop` ends the wait for a player. All references outlive the job.
    PlayJob(std::shared_ptr<Device> device, ExportHost& host, const std::atomic<bool>& toStop);

    /// A track whose file is not on the device plays nothing, and that is no failure.
    void doPlay(const Track& track);

private:
    std::shared_ptr<Device> _device;
    ExportHost& _host;
    const std::atomic<bool>& _toStop;
};
