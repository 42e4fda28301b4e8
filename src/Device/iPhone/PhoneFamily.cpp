#include "Device/iPhone/PhoneFamily.h"

#include "Base/Exception.h"
#include "Base/Mailbox.h"
#include "Device/DeviceDelegate.h"
#include "Device/iPhone/PhoneDevice.h"
#include "Device/iPhone/PhoneFailure.h"
#include "Device/iPhone/PhoneSession.h"
#include "Device/iPhone/PluggedPhone.h"
#include "Platform/PatientThread.h"

#include <algorithm>
#include <thread>

namespace
{
/// A phone that is pulled out while it is opened fails first and is told to have left a moment
/// later; then nobody need hear of the failure.
constexpr std::chrono::milliseconds WordOfDeparture(200);
/// Between two attempts to open a phone that has stopped answering.
constexpr std::chrono::milliseconds ReopeningPause(2000);

PhoneFailure noAnswer()
{
    return {
        PhoneFailure::Step::Use, PhoneFileService::Unreachable,
        QStringLiteral("AFCConnection failed with error %1").arg(PhoneFileService::Unreachable)};
}

Exception noSubscription(int error)
{
    return {QStringLiteral("AFCFactory"),
            QStringLiteral("AMDeviceNotificationSubscribe failed with error %1").arg(error)};
}

/// A file service that hangs still lets itself be opened.
void checkThatItAnswers(PhoneSession& session)
{
    if (!session.files().info(QStringLiteral("/")))
        throw noAnswer();
}
} // namespace

/// A phone whose session is being opened. The thread that opens it fills in what came of it.
struct PhoneFamily::Arrival {
    Phone phone;
    Purpose purpose = Purpose::Arrival;
    std::shared_ptr<PhoneSession> session;
    std::exception_ptr failure;

    [[nodiscard]] bool isOfNoUse() const { return phone && phone->hasLeft(); }
};

PhoneFamily& PhoneFamily::shared()
{
    static PhoneFamily& family = make(MobileDevice::subscribe);
    return family;
}

PhoneFamily& PhoneFamily::make(Subscribe subscribe)
{
    // Never destroyed: the library's thread may speak up, and sessions that are being opened may
    // come to an end, until the process has ended.
    return *new PhoneFamily(std::move(subscribe));
}

PhoneFamily::PhoneFamily(Subscribe subscribe)
    : _subscribe(std::move(subscribe))
    , _courier(new Mailbox)
{
}

Device::Devices PhoneFamily::start()
{
    _devices.clear();
    _heardOf.clear();
    try {
        _isStarted = true;
        for (const auto& [number, phone] : _plugged) // later ones are told of by themselves
            arrived(phone);
        subscribe();
        _courier->post([this] { sayIfNoService(); });
    } catch (const Exception& exception) {
        _isStarted = false;
        fail(exception); // players that mount as volumes go on working
    }
    return {};
}

void PhoneFamily::subscribe()
{
    if (_isSubscribed)
        return;
    const auto pass = [this](MobileDevice::Message message,
                             const MobileDevice::Attachment& attachment) {
        _courier->post([this, message, attachment] { notify(message, attachment); });
    };
    if (const int error = _subscribe(pass); error != 0)
        throw noSubscription(error);
    _isSubscribed = true;
}

void PhoneFamily::stop()
{
    _isStarted = false;
    for (const auto& [key, phone] : _devices) {
        phone->stopPreviews();
        phone->session().files().service().giveUp();
        phone->endPreviews();
    }
}

bool PhoneFamily::hasHeardOf(const std::vector<QString>& identifiers) const
{
    return std::all_of(identifiers.begin(), identifiers.end(),
                       [this](const QString& one) { return _heardOf.contains(one); });
}

bool PhoneFamily::isOpening() const
{
    return std::any_of(_arrivals.begin(), _arrivals.end(), [](const auto& arrival) {
        return arrival->purpose == Purpose::Arrival && !arrival->isOfNoUse();
    });
}

void PhoneFamily::notify(MobileDevice::Message message, const MobileDevice::Attachment& attachment)
{
    switch (message) {
    case MobileDevice::Message::Connected:
        _plugged[attachment.deviceID] = std::make_shared<PluggedPhone>(attachment);
        if (_isStarted)
            arrived(_plugged[attachment.deviceID]);
        break;
    case MobileDevice::Message::Disconnected:
        departed(attachment.deviceID);
        break;
    case MobileDevice::Message::Paired:
        paired(attachment.deviceID);
        break;
    }
}

void PhoneFamily::arrived(const Phone& phone)
{
    open(phone, Purpose::Arrival);
}

void PhoneFamily::departed(quint32 deviceID)
{
    const auto found = _plugged.find(deviceID);
    if (found == _plugged.end())
        return;
    const Phone phone = found->second;
    _plugged.erase(found);
    phone->leave();
    const auto device = _devices.find(phone->identifier());
    if (device != _devices.end() && &device->second->session().phone() == phone.get())
        remove(phone->identifier());
}

void PhoneFamily::paired(quint32 deviceID)
{
    const auto found = _plugged.find(deviceID);
    if (found == _plugged.end() || !_isStarted)
        return;
    const Phone phone = found->second;
    const bool isArriving =
        std::any_of(_arrivals.begin(), _arrivals.end(),
                    [&](const auto& arrival) { return arrival->phone == phone; });
    if (!isArriving && !_devices.contains(phone->identifier()))
        arrived(phone);
}

void PhoneFamily::open(const Phone& phone, Purpose purpose)
{
    const auto arrival = std::make_shared<Arrival>();
    arrival->phone = phone;
    arrival->purpose = purpose;
    _arrivals.push_back(arrival);
    // Nobody waits for this thread: a phone that hangs keeps it for minutes.
    PatientThread::alone([this, arrival] {
        try {
            arrival->session = PhoneSession::open(arrival->phone);
            if (arrival->purpose == Purpose::Reopening)
                checkThatItAnswers(*arrival->session);
        } catch (...) {
            arrival->failure = std::current_exception();
            std::this_thread::sleep_for(WordOfDeparture);
        }
        _courier->post([this, arrival] { finish(arrival); });
    });
}

void PhoneFamily::finish(const std::shared_ptr<Arrival>& arrival)
{
    _arrivals.remove(arrival);
    // Nobody need wait any longer for one that was pulled out meanwhile.
    if (arrival->phone)
        _heardOf.insert(arrival->phone->identifier());
    if (!_isStarted || arrival->isOfNoUse())
        return;
    if (arrival->purpose == Purpose::Reopening) {
        if (arrival->failure) {
            later(ReopeningPause, arrival->phone, &PhoneFamily::reopen);
            return;
        }
        remove(arrival->phone->identifier()); // what its readers know may have been cut short
    }
    try {
        if (arrival->failure)
            std::rethrow_exception(arrival->failure);
        if (!arrival->session)
            throw Exception(QStringLiteral("MainWindowController"),
                            QStringLiteral("Error occurred when trying to init AFC device."));
        add(arrival->session);
    } catch (const Exception& exception) {
        fail(exception);
    }
}

void PhoneFamily::add(const std::shared_ptr<PhoneSession>& session)
{
    const QString identifier = session->phone().identifier();
    const auto plugged = _plugged.find(session->phone().attachment().deviceID);
    if (plugged != _plugged.end()) {
        session->files().service().setLostHandler([this, known = std::weak_ptr(plugged->second)] {
            if (const Phone lost = known.lock())
                later(WordOfDeparture, lost, &PhoneFamily::noteLoss);
        });
    }
    const auto phone = std::make_shared<PhoneDevice>(session);
    _devices[identifier] = phone;
    if (DeviceDelegate* listener = Device::delegate())
        listener->deviceConnected(phone);
}

void PhoneFamily::remove(const QString& identifier)
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

void PhoneFamily::noteLoss(const Phone& phone)
{
    fail(noAnswer());
    reopen(phone);
}

void PhoneFamily::reopen(const Phone& phone)
{
    open(phone, Purpose::Reopening);
}

void PhoneFamily::later(std::chrono::milliseconds pause, const Phone& phone,
                        void (PhoneFamily::*what)(const Phone&))
{
    PatientThread::alone([this, pause, phone, what] {
        std::this_thread::sleep_for(pause);
        _courier->post([this, phone, what] {
            if (_isStarted && !phone->hasLeft())
                (this->*what)(phone);
        });
    });
}

void PhoneFamily::fail(const Exception& exception)
{
    if (DeviceDelegate* listener = Device::delegate())
        listener->deviceFailed(PhoneFailure::wordsFor(exception), exception.reason());
}

void PhoneFamily::sayIfNoService()
{
    std::vector<QString> identifiers;
    if (!_isStarted || !MobileDevice::isPhoneOnUsb())
        return;
    if (const int error = MobileDevice::attachedIdentifiers(identifiers); error != 0)
        fail(noSubscription(error));
}
