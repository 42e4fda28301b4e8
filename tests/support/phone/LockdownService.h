#pragma once

#include <QByteArray>
#include <QString>

class PhonePlist;
class PhoneStream;
class SimulatedPhone;

/// What a phone answers at its door: who it is, whether it knows the computer, and where its
/// services are.
class LockdownService
{
public:
    LockdownService(SimulatedPhone& phone, PhoneStream& stream)
        : _phone(phone)
        , _stream(stream)
    {
    }

    /// Answers until the connection ends.
    void serve();

private:
    PhonePlist answer(const QString& request, const PhonePlist& asked);
    void startSession(PhonePlist& reply);
    void startService(PhonePlist& reply, const QString& name);
    bool send(const PhonePlist& reply);

    SimulatedPhone& _phone;
    PhoneStream& _stream;
    bool _inSession = false;
    bool _encrypted = false;
};
