#pragma once

#include "Console/Interrupt.h"
#include "Device/Device.h"
#include "Device/DeviceDelegate.h"

/// Ends the copying of a device's databases once the person interrupts, for as long as it lives.
class InterruptibleReading final : public DeviceDelegate
{
public:
    InterruptibleReading() { Device::setDelegate(this); }
    ~InterruptibleReading() override { Device::setDelegate(nullptr); }

    bool exported(double /*progress*/) override { return !Interrupt::requested(); }
};
