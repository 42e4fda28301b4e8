#pragma once

#include "Device/Device.h"

#include <QString>

#include <memory>

/// Finding the device that a command is about.
namespace DeviceChooser
{
/// The devices that are connected, once the phones among them have answered; that is waited for
/// up to `waitSeconds`. Says which phones cannot be used, and why.
Device::Devices connected(double waitSeconds);

/// The device that `name` names: a key of one that is connected, or a folder that holds a
/// player's files; a null name stands for the only one connected. Null, after saying why, when
/// there is none or the choice is not clear.
std::shared_ptr<Device> choose(const QString& name, double waitSeconds);
} // namespace DeviceChooser
