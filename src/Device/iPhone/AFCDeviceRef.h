#pragma once

#include "Platform/MobileDevice.h"

#include <QString>

#include <atomic>

/// One phone as the USB names it, and the way to open a session with it.
class AFCDeviceRef
{
public:
    explicit AFCDeviceRef(const MobileDevice::Attachment& attachment)
        : _device(attachment)
    {
    }

    /// The calls of the session wait for the phone: not on the window's thread.
    [[nodiscard]] MobileDevice::Handle& device() { return _device; }
    /// New with every plugging in: what ties a departure to an arrival.
    [[nodiscard]] quint32 deviceID() const { return _device.attachment().deviceID; }
    [[nodiscard]] quint32 productID() const { return _device.attachment().productID; }
    /// The phone's own identifier, always the same.
    [[nodiscard]] QString serialNumber() const { return _device.attachment().identifier; }

    /// Whether the phone has been pulled out; may be asked on any thread.
    [[nodiscard]] bool hasLeft() const { return _hasLeft; }
    void leave() { _hasLeft = true; }

private:
    MobileDevice::Handle _device;
    std::atomic<bool> _hasLeft = false;
};
