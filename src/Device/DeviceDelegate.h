#pragma once

#include <memory>

class Device;
class QString;

/// Who hears of devices that come and go and of the progress of copies. A delegate overrides
/// what it wants to hear.
class DeviceDelegate
{
public:
    DeviceDelegate() = default;
    virtual ~DeviceDelegate() = default;
    DeviceDelegate(const DeviceDelegate&) = delete;
    DeviceDelegate& operator=(const DeviceDelegate&) = delete;

    /// A device arrived. On the thread that owns the event loop.
    virtual void deviceConnected(const std::shared_ptr<Device>& device);
    /// A device left and is no longer in its family's table. On the same thread.
    virtual void deviceDisconnected(const std::shared_ptr<Device>& device);
    /// A device is there and cannot be used: what a person can do about it, and the exact text of
    /// the failure. On the same thread.
    virtual void deviceFailed(const QString& words, const QString& exactText);
    /// A chunk was read and is about to be written: `progress` is the item's index plus the
    /// fraction of it that is copied. False stops the copy. On the thread that copies.
    virtual bool exported(double progress);
    /// The device lets a copy wait: asked about twice a second, with the progress of the last
    /// chunk. False stops the copy. On the thread that copies; asks `exported` unless overridden.
    virtual bool waited(double progress);
};
