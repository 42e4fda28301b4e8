#include "Console/DeviceChooser.h"

#include "Console/CommandLine.h"
#include "Console/Interrupt.h"
#include "Console/Terminal.h"
#include "Device/DeviceDelegate.h"
#include "Device/iPhone/PhoneDevice.h"
#include "Device/iPod/iPodDevice.h"
#include "Platform/MobileDevice.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QElapsedTimer>
#include <QThread>

namespace
{
/// For the phones that are plugged in, where nobody said how long: a list of what there is comes
/// soon, and a command that needs the device can wait for it.
constexpr double SecondsToList = 2;
constexpr double SecondsToUse = 10;
constexpr int MillisecondsBetweenLooks = 100;

struct Words {
    Q_DECLARE_TR_FUNCTIONS(DeviceChooser)
};

/// What is waited for, and how long.
struct Patience {
    QString key;             ///< of the one device that matters; null: any
    double seconds = 0;      ///< for phones that are known to be there
    bool forArrival = false; ///< also while nothing is there yet

    static Patience of(const QString& key, std::optional<double> asked, double otherwise)
    {
        return {key, asked.value_or(otherwise), asked.has_value()};
    }
};

/// The phones on the USB, asked for now and then: each time is a question to a service.
class PluggedPhones
{
public:
    /// Whether one of them has neither been announced nor failed.
    bool areBeingOpened()
    {
        if (!_lastLook.isValid() || _lastLook.elapsed() >= MillisecondsBetweenLooks) {
            _lastLook.start();
            std::vector<QString> phones;
            if (MobileDevice::attachedIdentifiers(phones) != 0)
                phones.clear();
            _phones = std::move(phones);
        }
        return !PhoneDevice::hasHeardOf(_phones);
    }

private:
    std::vector<QString> _phones;
    QElapsedTimer _lastLook;
};

/// Keeps what is there and what arrives while it lives, in the place of the command's own
/// delegate.
class ArrivalListener final : public DeviceDelegate
{
public:
    ArrivalListener()
        : _before(Device::delegate())
    {
        Device::setDelegate(this);
        devices = Device::init();
    }
    ~ArrivalListener() override { Device::setDelegate(_before); }

    void deviceConnected(const std::shared_ptr<Device>& device) override
    {
        devices.try_emplace(device->key(), device);
    }
    void deviceDisconnected(const std::shared_ptr<Device>& device) override
    {
        devices.erase(device->key());
    }
    void deviceFailed(const QString& words, const QString& exactText) override
    {
        Terminal::say(QStringLiteral("%1 (%2)").arg(words, exactText));
    }

    /// Runs the event loop until there is what is waited for. Says so when a phone that is there
    /// has not answered by then.
    void wait(const Patience& patience)
    {
        const QDeadlineTimer deadline(qint64(patience.seconds * 1000));
        PluggedPhones phones;
        for (;;) {
            QCoreApplication::processEvents(QEventLoop::AllEvents);
            const bool isThere = !patience.key.isNull() && devices.count(patience.key) > 0;
            if (isThere || Interrupt::requested())
                return;
            const bool areBeingOpened = phones.areBeingOpened();
            const bool isMissing =
                patience.forArrival && (!patience.key.isNull() || devices.empty());
            if (!areBeingOpened && !isMissing)
                return;
            if (deadline.hasExpired()) {
                if (areBeingOpened)
                    Terminal::say(Words::tr("A phone is plugged in that has not answered within "
                                            "%1 seconds.")
                                      .arg(patience.seconds));
                return;
            }
            QThread::msleep(5);
        }
    }

    Device::Devices devices;

private:
    DeviceDelegate* _before;
};

Device::Devices arrivedWithin(const Patience& patience)
{
    ArrivalListener listener;
    listener.wait(patience);
    return listener.devices;
}

void sayWhichThereAre(const Device::Devices& devices)
{
    for (const auto& [key, device] : devices)
        Terminal::say(QStringLiteral("  %1  %2").arg(key, device->description()));
}

void sayThatThereIsNone(const QString& name)
{
    Terminal::say(name.isNull() ? Words::tr("No device is connected.")
                                : Words::tr("There is no device %1, and no folder of that name "
                                            "that holds iPod_Control or iTunes_Control.")
                                      .arg(name));
}
} // namespace

Device::Devices DeviceChooser::connected(std::optional<double> waitSeconds)
{
    return arrivedWithin(Patience::of({}, waitSeconds, SecondsToList));
}

std::shared_ptr<Device> DeviceChooser::choose(const QString& name,
                                              std::optional<double> waitSeconds)
{
    if (!name.isNull()) {
        const QString folder = QDir(name).absolutePath();
        if (iPodDevice::isiPodAtPrefix(folder))
            return std::make_shared<iPodDevice>(folder);
    }
    const Device::Devices devices = arrivedWithin(Patience::of(name, waitSeconds, SecondsToUse));
    if (Interrupt::requested())
        return nullptr;
    if (const auto found = devices.find(name); !name.isNull() && found != devices.end())
        return found->second;
    if (name.isNull() && devices.size() == 1)
        return devices.begin()->second;
    if (name.isNull() && !devices.empty())
        Terminal::say(Words::tr("Several devices are connected; name one with --device:"));
    else
        sayThatThereIsNone(name);
    sayWhichThereAre(devices);
    return nullptr;
}

int DeviceChooser::exitCodeWithout()
{
    return Interrupt::requested() ? ExitCode::Stopped : ExitCode::NoDevice;
}
