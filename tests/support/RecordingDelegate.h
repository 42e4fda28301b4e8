#pragma once

#include "Device/Device.h"
#include "Device/DeviceDelegate.h"

#include <QStringList>

#include <functional>
#include <vector>

/// A delegate that writes down what it hears; the hub's delegate for as long as it lives.
class RecordingDelegate final : public DeviceDelegate
{
public:
    RecordingDelegate() { Device::setDelegate(this); }
    ~RecordingDelegate() override { Device::setDelegate(nullptr); }

    void deviceConnected(const std::shared_ptr<Device>& device) override
    {
        events.append("+" + device->key());
        last = device;
    }
    void deviceDisconnected(const std::shared_ptr<Device>& device) override
    {
        events.append("-" + device->key());
        last = device;
    }
    void deviceFailed(const QString& words, const QString& exactText) override
    {
        failures.append(exactText);
        failureWords.append(words);
    }
    bool exported(double value) override
    {
        progress.push_back(value);
        return !onChunk || onChunk(int(progress.size()));
    }

    bool waited(double /*progress*/) override { return !onWait || onWait(); }

    QStringList events;
    QStringList failures; ///< the exact texts
    QStringList failureWords;
    std::shared_ptr<Device> last;
    std::vector<double> progress;
    /// Called with the number of each chunk, from 1 on; answers for the delegate.
    std::function<bool(int chunk)> onChunk;
    /// The same where the device lets wait.
    std::function<bool()> onWait;
};
