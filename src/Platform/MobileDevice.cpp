#include "Platform/MobileDevice.h"

#include "Platform/PatientThread.h"

#include <libimobiledevice/libimobiledevice.h>
#include <libimobiledevice/lockdown.h>
#include <plist/plist.h>
#include <usbmuxd.h>

#include <cstdlib>
#include <utility>

namespace
{
constexpr const char* Label = "zell-transfer";
/// The first version whose phones judge a pairing when a session starts.
constexpr int FirstJudgingAtSession = 7;

QString textAndFree(char* text)
{
    const QString copy = QString::fromUtf8(text);
    std::free(text);
    return copy;
}
} // namespace

namespace MobileDevice
{
Service::Service(lockdownd_service_descriptor* descriptor)
    : _descriptor(descriptor, lockdownd_service_descriptor_free)
{
}

Service::operator bool() const
{
    return _descriptor && _descriptor->port != 0;
}

Handle::Handle(Attachment attachment)
    : _attachment(std::move(attachment))
{
}

Handle::~Handle()
{
    end();
}

void Handle::end()
{
    if (!_device)
        return;
    // Ending the session waits for the phone's answer, which may never come.
    PatientThread::alone(
        [client = std::exchange(_client, nullptr), device = std::exchange(_device, nullptr)] {
            if (client)
                lockdownd_client_free(client);
            idevice_free(device);
        });
}

int Handle::connect()
{
    end();
    const QByteArray identifier = _attachment.identifier.toUtf8();
    if (const int error = idevice_new(&_device, identifier.constData()); error != 0)
        return error;
    if (const int error = lockdownd_client_new(_device, &_client, Label); error != 0)
        return error;
    char* type = nullptr;
    const int error = lockdownd_query_type(_client, &type);
    std::free(type);
    return error;
}

bool Handle::isPaired()
{
    char* record = nullptr;
    std::uint32_t size = 0;
    const int error =
        usbmuxd_read_pair_record(_attachment.identifier.toUtf8().constData(), &record, &size);
    std::free(record);
    return error == 0;
}

int Handle::validatePairing()
{
    const int error = lockdownd_validate_pair(_client, nullptr);
    // Newer phones judge when the session starts, and need not know this question.
    if (error == LOCKDOWN_E_UNKNOWN_ERROR && productMajorVersion() >= FirstJudgingAtSession)
        return 0;
    return error;
}

int Handle::startSession()
{
    // Only this call learns the phone's version, without which only outdated encryption is
    // spoken. It would pair by itself if there were no valid pairing, which the two questions
    // before have ruled out.
    lockdownd_client_private* client = nullptr;
    const int error = lockdownd_client_new_with_handshake(_device, &client, Label);
    if (error != 0)
        return error;
    lockdownd_client_free(_client);
    _client = client;
    return 0;
}

int Handle::startService(const QString& name, Service& service)
{
    lockdownd_service_descriptor* descriptor = nullptr;
    const int error = lockdownd_start_service(_client, name.toUtf8().constData(), &descriptor);
    if (descriptor)
        service = Service(descriptor);
    return error;
}

int Handle::productMajorVersion()
{
    plist_t value = nullptr;
    if (lockdownd_get_value(_client, nullptr, "ProductVersion", &value) != 0)
        return 0;
    char* text = nullptr;
    if (plist_get_node_type(value) == PLIST_STRING)
        plist_get_string_val(value, &text);
    plist_free(value);
    return textAndFree(text).section(u'.', 0, 0).toInt();
}
} // namespace MobileDevice
