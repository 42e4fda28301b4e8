#include "Device/iPhone/PhoneFailure.h"

#include "Platform/MobileDevice.h"

namespace
{
/// What phones answer, as far as people can do something about it.
enum Answer {
    EncryptionFailed = -5,
    PasswordProtected = -17,
    UserDeniedPairing = -18,
    PairingDialogResponsePending = -19,
    MissingHostID = -20,
    InvalidHostID = -21,
    MissingPairRecord = -29,
    InvalidPairRecord = -31,
    EscrowLocked = -35
};

bool isServiceReachable()
{
    std::vector<QString> identifiers;
    return MobileDevice::attachedIdentifiers(identifiers) == 0;
}
} // namespace

PhoneFailure::PhoneFailure(Step step, int code, const QString& reason)
    : Exception(QStringLiteral("AFCDevice"), reason)
    , _step(step)
    , _code(code)
    , _isServiceReachable(step != Step::Connect || isServiceReachable())
{
}

QString PhoneFailure::words() const
{
    if (_step == Step::Connect)
        return _isServiceReachable ? noAnswer() : noService();
    if (_step == Step::Use)
        return tr("The phone has stopped answering. Unlock it; it is opened again as soon as it "
                  "answers.");
    switch (_step == Step::IsPaired ? int(InvalidHostID) : _code) {
    case PasswordProtected:
    case EscrowLocked:
        return tr("The phone is locked. Unlock it and connect it again.");
    case UserDeniedPairing:
    case PairingDialogResponsePending:
    case MissingHostID:
    case InvalidHostID:
    case MissingPairRecord:
    case InvalidPairRecord:
        return tr("The phone does not trust this computer. Unlock the phone, connect it again and "
                  "tap Trust.");
    case EncryptionFailed:
        return tr("No secure connection to the phone could be made. Connect it again.");
    default:
        break;
    }
    if (_step == Step::StartService || _step == Step::Open)
        return tr("The phone does not give access to its files. Unlock it and connect it again.");
    return noAnswer();
}

QString PhoneFailure::wordsFor(const Exception& exception)
{
    if (const auto* failure = dynamic_cast<const PhoneFailure*>(&exception))
        return failure->words();
    return exception.name() == u"AFCFactory" ? noService() : noAnswer();
}

QString PhoneFailure::noAnswer()
{
    return tr("The phone does not answer. Unlock it and connect it again.");
}

QString PhoneFailure::noService()
{
    return tr("The service usbmuxd, which reaches phones over USB, is not running. Install or "
              "start it, then connect the phone again.");
}

Failure PhoneFailure::lost(PhoneFileService::Loss loss)
{
    switch (loss) {
    case PhoneFileService::Loss::None:
    case PhoneFileService::Loss::Disconnected:
        break;
    case PhoneFileService::Loss::Silent:
        return {Failure::Kind::Lost, tr("The device does not answer"), {}};
    case PhoneFileService::Loss::Nonsense:
        return {
            Failure::Kind::Lost, tr("The device does not answer in a way that makes sense"), {}};
    }
    return {Failure::Kind::Lost, tr("The device was disconnected"), {}};
}
