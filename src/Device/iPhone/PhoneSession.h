#pragma once

#include "Device/iPhone/PhoneFiles.h"

#include <memory>

class PluggedPhone;

/// An open session with a phone, and the way to its files.
class PhoneSession
{
public:
    /// Opens session and file service, which waits for the phone. Null without a phone; throws the
    /// Exception "AFCDevice" that says which step failed, and why. Never pairs.
    static std::shared_ptr<PhoneSession> open(const std::shared_ptr<PluggedPhone>& phone);

    [[nodiscard]] const PluggedPhone& phone() const { return *_phone; }
    [[nodiscard]] PhoneFiles& files() { return _files; }
    /// Why nothing more comes from the phone; none while it can be asked. Any thread.
    [[nodiscard]] std::optional<Failure> whyGone() const;

private:
    PhoneSession(std::shared_ptr<PluggedPhone> phone, std::unique_ptr<MobileDevice::Handle> handle,
                 std::shared_ptr<PhoneFileService> service);

    std::shared_ptr<PluggedPhone> _phone;
    std::unique_ptr<MobileDevice::Handle> _handle; ///< keeps the session open
    PhoneFiles _files;
};
