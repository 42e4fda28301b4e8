#pragma once

#include "Platform/MobileDevice.h"

#include <atomic>

/// One phone, from its plugging in until it is pulled out.
class PluggedPhone
{
public:
    explicit PluggedPhone(MobileDevice::Attachment attachment)
        : _attachment(std::move(attachment))
    {
    }

    [[nodiscard]] const MobileDevice::Attachment& attachment() const { return _attachment; }
    /// The phone's own identifier, always the same.
    [[nodiscard]] const QString& identifier() const { return _attachment.identifier; }

    /// Whether it has been pulled out. Any thread.
    [[nodiscard]] bool hasLeft() const { return _hasLeft; }
    void leave() { _hasLeft = true; }

private:
    const MobileDevice::Attachment _attachment;
    std::atomic<bool> _hasLeft = false;
};
