#include "Device/iPhone/iPhoneFamily.h"

#include "Base/Exception.h"
#include "Base/Mailbox.h"
#include "Device/DeviceDelegate.h"
#include "Device/iPhone/AFCDeviceRef.h"
#include "Device/iPhone/AFCFailure.h"
#include "Device/iPhone/AFCInterface.h"
#include "Device/iPhone/iPhoneDevice.h"
#include "Platform/AFCConnection.h"
#include "Platform/PatientThread.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace
{
/// A phone that is pulled out while it is opened fails first and is told to have left a moment
/// later; then nobody need hear of the failure.
constexpr std::chrono::milliseconds WordOfDeparture(200);
/// Between two attempts to open a phone that has stopped answering.
constexpr std::chrono::milliseconds ReopeningPause(2000);

AFCFailure noAnswer()
{
    return {AFCFailure::Step::Use, AFCConnection::Lost,
            QStringLiteral("AFCConnection failed with error %1").arg(AFCConnection::Lost)};
}

/// A file service that hangs still lets itself be opened.
void checkThatItAnswers(AFCDevice& device)
{
    if (!device.deviceInterface().isDirectoryAtPath(QStringLiteral("/")))
        throw noAnswer();
}
} // namespace

/// A phone whose session is being opened. The thread that opens it fills in what came of it.
struct iPhoneFamily::Arrival {
    std::shared_ptr<AFCDeviceRef> ref;
    Purpose purpose = Purpose::Arrival;
    std::shared_ptr<AFCDevice> device;
    std::exception_ptr failure;
};

iPhoneFamily& iPhoneFamily::shared()
{
    // Never destroyed: sessions that are being opened may come to an end at any moment.
    static auto* const family = new iPhoneFamily;
    return *family;
}

iPhoneFamily::iPhoneFamily()
    : _courier(new Mailbox)
{
}

Device::Devices iPhoneFamily::start()
{
    _devices.clear();
    _heardOf.clear();
    try {
        AFCFactory::factory().setDelegate(this);
        _isStarted = true;
        _courier->post([this] { sayIfNoService(); });
    } catch (const Exception& exception) {
        fail(exception); // players that mount as volumes go on working
    }
    return _devices;
}

void iPhoneFamily::stop()
{
    if (_isStarted)
        AFCFactory::factory().setDelegate(nullptr);
    _isStarted = false;
    for (const auto& [key, phone] : _devices)
        phone->endPreviews();
}

bool iPhoneFamily::hasHeardOf(const std::vector<QString>& identifiers) const
{
    return std::all_of(identifiers.begin(), identifiers.end(),
                       [this](const QString& one) { return _heardOf.contains(one); });
}

void iPhoneFamily::AFCDeviceWasConnected(const std::shared_ptr<AFCDeviceRef>& ref)
{
    open(ref, Purpose::Arrival);
}

void iPhoneFamily::open(const std::shared_ptr<AFCDeviceRef>& ref, Purpose purpose)
{
    const auto arrival = std::make_shared<Arrival>();
    arrival->ref = ref;
    arrival->purpose = purpose;
    _arrivals.push_back(arrival);
    // Nobody waits for this thread: a phone that hangs keeps it for minutes.
    PatientThread::alone([this, arrival] {
        try {
            arrival->device = AFCDevice::initWithRef(arrival->ref);
            if (arrival->purpose == Purpose::Reopening)
                checkThatItAnswers(*arrival->device);
        } catch (...) {
            arrival->failure = std::current_exception();
            std::this_thread::sleep_for(WordOfDeparture);
        }
        _courier->post([this, arrival] { finish(arrival); });
    });
}

void iPhoneFamily::AFCDeviceWasPaired(const std::shared_ptr<AFCDeviceRef>& ref)
{
    const bool isArriving = std::any_of(_arrivals.begin(), _arrivals.end(),
                                        [&](const auto& arrival) { return arrival->ref == ref; });
    if (!isArriving && !_devices.contains(ref->serialNumber()))
        AFCDeviceWasConnected(ref);
}

void iPhoneFamily::finish(const std::shared_ptr<Arrival>& arrival)
{
    _arrivals.remove(arrival);
    // Nobody need wait any longer for one that was pulled out meanwhile.
    if (arrival->ref)
        _heardOf.insert(arrival->ref->serialNumber());
    if (!_isStarted || (arrival->ref && arrival->ref->hasLeft()))
        return;
    if (arrival->purpose == Purpose::Reopening) {
        if (arrival->failure) {
            later(ReopeningPause, arrival->ref, &iPhoneFamily::reopen);
            return;
        }
        remove(arrival->ref->serialNumber()); // what its readers know may have been cut short
    }
    try {
        if (arrival->failure)
            std::rethrow_exception(arrival->failure);
        if (!arrival->device)
            throw Exception(QStringLiteral("MainWindowController"),
                            QStringLiteral("Error occurred when trying to init AFC device."));
        add(arrival->ref, arrival->device);
    } catch (const Exception& exception) {
        fail(exception);
    }
}

void iPhoneFamily::add(const std::shared_ptr<AFCDeviceRef>& ref,
                       const std::shared_ptr<AFCDevice>& device)
{
    device->setDelegate(this);
    const auto hasLost = [this, known = std::weak_ptr(ref)] {
        if (const auto lost = known.lock())
            later(WordOfDeparture, lost, &iPhoneFamily::noteLoss);
    };
    device->deviceInterface().connection().setLostHandler(hasLost);
    const auto phone = std::make_shared<iPhoneDevice>(device);
    _devices[ref->serialNumber()] = phone;
    if (DeviceDelegate* listener = Device::delegate())
        listener->deviceConnected(phone);
}

void iPhoneFamily::deviceWasDisconnected(AFCDevice& device)
{
    remove(device.device()->serialNumber());
}

void iPhoneFamily::remove(const QString& identifier)
{
    const auto found = _devices.find(identifier);
    if (found == _devices.end())
        return;
    const std::shared_ptr<Device> phone = found->second;
    _devices.erase(found);
    phone->stopPreviews(); // whoever still holds the device must not keep them going
    if (DeviceDelegate* listener = Device::delegate())
        listener->deviceDisconnected(phone);
}

void iPhoneFamily::noteLoss(const std::shared_ptr<AFCDeviceRef>& ref)
{
    fail(noAnswer());
    reopen(ref);
}

void iPhoneFamily::reopen(const std::shared_ptr<AFCDeviceRef>& ref)
{
    if (const auto renewed = AFCFactory::factory().renew(*ref))
        open(renewed, Purpose::Reopening);
}

void iPhoneFamily::later(std::chrono::milliseconds pause, const std::shared_ptr<AFCDeviceRef>& ref,
                         void (iPhoneFamily::*what)(const std::shared_ptr<AFCDeviceRef>&))
{
    PatientThread::alone([this, pause, ref, what] {
        std::this_thread::sleep_for(pause);
        _courier->post([this, ref, what] {
            if (_isStarted && !ref->hasLeft())
                (this->*what)(ref);
        });
    });
}

void iPhoneFamily::fail(const Exception& exception)
{
    if (DeviceDelegate* listener = Device::delegate())
        listener->deviceFailed(AFCFailure::wordsFor(exception), exception.reason());
}

void iPhoneFamily::sayIfNoService()
{
    std::vector<QString> identifiers;
    if (!_isStarted || !MobileDevice::isPhoneOnUsb())
        return;
    if (const int error = MobileDevice::attachedIdentifiers(identifiers); error != 0)
        fail(Exception(
            QStringLiteral("AFCFactory"),
            QStringLiteral("AMDeviceNotificationSubscribe failed with error %1").arg(error)));
}
