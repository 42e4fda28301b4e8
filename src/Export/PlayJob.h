#pragma once

#include "Base/Expected.h"

#include <QCoreApplication>

#include <atomic>
#include <memory>

class Device;
class ExportHost;
struct Track;

/// Plays one track of a device: copies it to a private place and opens the copy. It tells its
/// host the same as an export of one item does. On the thread that calls.
class PlayJob
{
    Q_DECLARE_TR_FUNCTIONS(PlayJob)

public:
    /// `toStop` ends the wait for a player. All references outlive the job.
    PlayJob(std::shared_ptr<Device> device, ExportHost& host, const std::atomic<bool>& toStop);

    /// Why a track cannot be played is told as well. One whose file is not on the device ends like
    /// one that was played; one that was not copied whole ends as canceled.
    void doPlay(const Track& track);

private:
    /// Whether there is a file of its own to copy.
    Status find(const Track& track) const;
    Status copy(const Track& track, const QString& to);

    std::shared_ptr<Device> _device;
    ExportHost& _host;
    const std::atomic<bool>& _toStop;
};
