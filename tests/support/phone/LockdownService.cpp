#include "support/phone/LockdownService.h"

#include "support/phone/PhoneKeys.h"
#include "support/phone/PhonePlist.h"
#include "support/phone/PhoneStream.h"
#include "support/phone/SimulatedPhone.h"

#include <QtEndian>

namespace
{
constexpr quint32 LongestRequest = 1 << 20;
const QString FileService = QStringLiteral("com.apple.afc");

/// Whether a request is known to leave everything as it is.
bool onlyReads(const QString& request)
{
    static const QStringList reading = {
        QStringLiteral("QueryType"),    QStringLiteral("GetValue"),
        QStringLiteral("ValidatePair"), QStringLiteral("StartSession"),
        QStringLiteral("StopSession"),  QStringLiteral("StartService"),
        QStringLiteral("Goodbye")};
    return reading.contains(request);
}
} // namespace

void LockdownService::serve()
{
    for (;;) {
        quint32 length = 0;
        if (!_stream.read(&length, sizeof length))
            return;
        length = qFromBigEndian(length);
        const QByteArray bytes = _stream.read(std::min(length, LongestRequest));
        if (bytes.isNull())
            return;
        const PhonePlist asked(bytes);
        const QString request = asked.text("Request");
        _phone.recordRequest(request);
        if (!onlyReads(request))
            _phone.recordWrite(request);
        const PhoneFaults faults = _phone.faults();
        if (faults.hangsAtDoor)
            _phone.hang(_stream);
        if (faults.garbageAtDoor) {
            _stream.write(QByteArray(256, '\xd7'));
            return;
        }
        const bool startsEncryption =
            request == u"StartSession" && _phone.identity().tls && !_encrypted;
        if (!send(answer(request, asked)))
            return;
        if (startsEncryption && _inSession) {
            if (!_stream.startTls(PhoneKeys::shared().tls()))
                return;
            _encrypted = true;
        }
        if (request == u"StopSession" && _encrypted) {
            _stream.stopTls();
            _encrypted = false;
        }
        if (request == u"Goodbye")
            return;
    }
}

PhonePlist LockdownService::answer(const QString& request, const PhonePlist& asked)
{
    const PhoneFaults faults = _phone.faults();
    PhonePlist reply;
    reply.set("Request", request);
    if (request == u"QueryType") {
        reply.set("Type", QStringLiteral("com.apple.mobile.lockdown"));
    } else if (request == u"GetValue") {
        const QString key = asked.text("Key");
        reply.set("Key", key);
        if (key == u"ProductVersion")
            reply.set("Value", _phone.identity().version);
        else if (key == u"DeviceName")
            reply.set("Value", _phone.identity().name);
        else
            reply.set("Error", QStringLiteral("MissingValue"));
    } else if (request == u"ValidatePair") {
        if (!faults.knowsHost)
            reply.set("Error", QStringLiteral("InvalidHostID"));
    } else if (request == u"Pair") {
        reply.set("Error", QStringLiteral("PairingDialogResponsePending"));
    } else if (request == u"StartSession") {
        startSession(reply);
    } else if (request == u"StopSession") {
        _inSession = false;
    } else if (request == u"StartService") {
        startService(reply, asked.text("Service"));
    } else if (request != u"Goodbye") {
        reply.set("Error", QStringLiteral("UnknownRequest"));
    }
    return reply;
}

void LockdownService::startSession(PhonePlist& reply)
{
    const PhoneFaults faults = _phone.faults();
    if (!faults.knowsHost) {
        reply.set("Error", QStringLiteral("InvalidHostID"));
    } else if (faults.locked) {
        reply.set("Error", QStringLiteral("PasswordProtected"));
    } else {
        _inSession = true;
        reply.set("SessionID", QStringLiteral("5D1A2C3B-0000-4000-8000-0000000000AA"));
        reply.setFlag("EnableSessionSSL", _phone.identity().tls);
    }
}

void LockdownService::startService(PhonePlist& reply, const QString& name)
{
    const PhoneFaults faults = _phone.faults();
    reply.set("Service", name);
    if (!_inSession) {
        reply.set("Error", QStringLiteral("SessionInactive"));
    } else if (!faults.serviceError.isEmpty()) {
        reply.set("Error", faults.serviceError);
    } else if (name != FileService) {
        reply.set("Error", QStringLiteral("InvalidService"));
    } else {
        reply.set("Port", quint64(faults.noServiceHandle ? 0 : _phone.newPort()));
        reply.setFlag("EnableServiceSSL", _phone.identity().tls);
    }
}

bool LockdownService::send(const PhonePlist& reply)
{
    const QByteArray xml = reply.xml();
    const quint32 length = qToBigEndian(quint32(xml.size()));
    return _stream.write(QByteArray(reinterpret_cast<const char*>(&length), sizeof length) + xml);
}
