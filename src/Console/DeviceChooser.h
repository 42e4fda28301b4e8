#pragma once

#include "Device/Device.h"

#include <QString>

#include <memory>
#include <optional>

/// Finding the device that a command is about.
namespace DeviceChooser
{
/// The devices that are connected. Without `waitSeconds`, a moment is waited for the phones that
/// are plugged in; with it, until there is a device at all as well. Says which phones cannot be
/// used, and why, and ends at once when the person interrupts.
Device::Devices connected(std::optional<double> waitSeconds);

/// The device that `name` names: a key of one that is connected, or a folder that holds a
/// player's files; a null name stands for the only one connected. Waits likewise, and longer for
/// a phone that is plugged in. Null, after saying why, when there is none or the choice is not
/// clear.
std::shared_ptr<Device> choose(const QString& name, std::optional<double> waitSeconds);
/// The program's exit code where there was none to choose.
int exitCodeWithout();
} // namespace DeviceChooser
