#pragma once

#include "Device/iPhone/AFCDevice.h"
#include "Device/iPhone/AFCDeviceRef.h"
#include "Device/iPhone/AFCInterface.h"
#include "Platform/AFCConnection.h"
#include "support/phone/PhoneFixture.h"

/// A phone with an open session, without the hub.
class ConnectedPhone : public PhoneFixture
{
protected:
    ConnectedPhone()
        : phone(newPhone())
    {
        usb.attach(phone);
        afc = AFCDevice::initWithRef(newRef());
        phone->forget();
    }

    static std::shared_ptr<AFCDeviceRef> newRef()
    {
        return std::make_shared<AFCDeviceRef>(
            MobileDevice::Attachment{1, 0x12a8, "0123456789abcdef"});
    }
    AFCInterface& files() { return afc->deviceInterface(); }
    void change(const std::function<void(PhoneFaults&)>& what) { phone->changeFaults(what); }

    std::shared_ptr<SimulatedPhone> phone;
    std::shared_ptr<AFCDevice> afc;
};
