#include "Device/iPhone/PhoneSession.h"

#include "Device/iPhone/PhoneFailure.h"
#include "Device/iPhone/PluggedPhone.h"

namespace
{
using Step = PhoneFailure::Step;

const QString FileService = QStringLiteral("com.apple.afc");

/// Throws what a call that should give 0 has failed with.
void check(Step step, const char* call, int error)
{
    if (error != 0)
        throw PhoneFailure(
            step, error,
            QStringLiteral("%1 failed with error %2").arg(QString::fromLatin1(call)).arg(error));
}

void openSession(MobileDevice::Handle& phone)
{
    check(Step::Connect, "AMDeviceConnect", phone.connect());
    if (!phone.isPaired())
        throw PhoneFailure(Step::IsPaired, 0, QStringLiteral("Device pairing failed"));
    check(Step::ValidatePairing, "AMDeviceValidatePairing", phone.validatePairing());
    check(Step::StartSession, "AMDeviceStartSession", phone.startSession());
}

std::shared_ptr<PhoneFileService> openFiles(MobileDevice::Handle& phone)
{
    MobileDevice::Service service;
    check(Step::StartService, "AMDeviceStartService", phone.startService(FileService, service));
    if (!service)
        throw PhoneFailure(Step::StartService, 0,
                           QStringLiteral("AMDeviceStartService didn't initialise a connection"));
    int error = 0;
    auto files = PhoneFileService::open(phone, service, error);
    check(Step::Open, "AFCConnectionOpen", error);
    return files;
}
} // namespace

std::shared_ptr<PhoneSession> PhoneSession::open(const std::shared_ptr<PluggedPhone>& phone)
{
    if (!phone)
        return nullptr;
    auto handle = std::make_unique<MobileDevice::Handle>(phone->attachment());
    openSession(*handle);
    auto files = openFiles(*handle);
    return std::shared_ptr<PhoneSession>(
        new PhoneSession(phone, std::move(handle), std::move(files)));
}

PhoneSession::PhoneSession(std::shared_ptr<PluggedPhone> phone,
                           std::unique_ptr<MobileDevice::Handle> handle,
                           std::shared_ptr<PhoneFileService> service)
    : _phone(std::move(phone))
    , _handle(std::move(handle))
    , _files(std::move(service))
{
}

std::optional<Failure> PhoneSession::whyGone() const
{
    const PhoneFileService::Loss loss = _files.service().loss();
    if (loss != PhoneFileService::Loss::None)
        return PhoneFailure::lost(loss);
    if (_phone->hasLeft())
        return PhoneFailure::lost(PhoneFileService::Loss::Disconnected);
    return std::nullopt;
}
