#include "support/phone/PhoneCommands.h"

#include <functional>
#include <map>

namespace
{
using Fault = std::function<void(PhoneFaults&, const QStringList&)>;

qint64 number(const QStringList& words, qsizetype index)
{
    return words.value(index).toLongLong();
}

/// The faults by name. Each takes the words after it.
const std::map<QString, Fault>& faultsByName()
{
    using Words = QStringList;
    static const std::map<QString, Fault> all = {
        {"well", [](PhoneFaults& f, const Words&) { f = {}; }},
        {"unpaired", [](PhoneFaults& f, const Words&) { f.hasRecord = false; }},
        {"forget", [](PhoneFaults& f, const Words&) { f.knowsHost = false; }},
        {"lock", [](PhoneFaults& f, const Words&) { f.locked = true; }},
        {"refuse",
         [](PhoneFaults& f, const Words& w) { f.serviceError = w.value(0, "ServiceProhibited"); }},
        {"mute", [](PhoneFaults& f, const Words&) { f.hangsAtDoor = true; }},
        {"babble", [](PhoneFaults& f, const Words&) { f.garbageAtDoor = true; }},
        {"short", [](PhoneFaults& f, const Words& w) { f.longestRead = quint64(number(w, 0)); }},
        {"bad",
         [](PhoneFaults& f, const Words& w) {
             f.badRange = PhoneFaults::BadRange{w.value(0), number(w, 1), number(w, 2)};
         }},
        {"slow", [](PhoneFaults& f, const Words& w) { f.slowMilliseconds = int(number(w, 0)); }},
        {"cut", [](PhoneFaults& f, const Words& w) { f.cutAfterBytes = number(w, 0); }},
        {"stall", [](PhoneFaults& f, const Words& w) { f.stallAfterBytes = number(w, 0); }},
        {"trickle", [](PhoneFaults& f, const Words& w) { f.bytesAtATime = number(w, 0); }},
        {"refusepath",
         [](PhoneFaults& f, const Words& w) { f.statuses[w.value(0)] = quint64(number(w, 1)); }},
        {"size", [](PhoneFaults& f, const Words& w) { f.sizes[w.value(0)] = w.value(1).toUtf8(); }},
        {"resize",
         [](PhoneFaults& f, const Words& w) { f.sizesOnceOpen[w.value(0)] = w.value(1).toUtf8(); }},
        {"endless", [](PhoneFaults& f, const Words&) { f.foreverFull = true; }},
        {"garbage",
         [](PhoneFaults& f, const Words& w) { f.garbageAfterOperations = number(w, 0); }},
        {"hang", [](PhoneFaults& f, const Words& w) { f.hangAfterOperations = number(w, 0); }},
    };
    return all;
}
} // namespace

PhoneCommands::PhoneCommands(SimulatedUsb& usb, std::vector<std::shared_ptr<SimulatedPhone>> phones)
    : _usb(usb)
    , _phones(std::move(phones))
{
}

QString PhoneCommands::help()
{
    return QStringLiteral("Commands, one a line, N being the phone's number from 1 on:\n"
                          "  attach N, detach N, paired N (the two have just paired)\n"
                          "  well N            nothing is wrong any more\n"
                          "  unpaired N, forget N, lock N, refuse N [ERROR]\n"
                          "  mute N, babble N  no answer, or rubbish, at the phone's door\n"
                          "  short N BYTES     no read gives more\n"
                          "  bad N FILE FIRST END   reads in that range fail\n"
                          "  slow N MILLISECONDS    before each answer\n"
                          "  trickle N BYTES   the link carries so many in a millisecond\n"
                          "  cut N BYTES       the connection ends after so many bytes\n"
                          "  stall N BYTES     nothing more comes after so many bytes\n"
                          "  refusepath N PATH STATUS   whatever is asked about it\n"
                          "  size N PATH SIZE, resize N PATH SIZE   what is said of a file; the\n"
                          "                    second once it was opened\n"
                          "  endless N         files go on for ever\n"
                          "  garbage N OPERATIONS, hang N OPERATIONS   after so many\n"
                          "  writes N          how often somebody tried to write\n"
                          "  quit");
}

QString PhoneCommands::run(const QString& line)
{
    QStringList words = line.split(u' ', Qt::SkipEmptyParts);
    const QString verb = words.isEmpty() ? QString() : words.takeFirst();
    if (verb == u"quit") {
        _isOver = true;
        return QStringLiteral("ok");
    }
    const auto index = std::size_t(words.isEmpty() ? 0 : words.takeFirst().toUInt());
    if (index < 1 || index > _phones.size())
        return QStringLiteral("there is no such phone");
    return obey(_phones[index - 1], verb, words);
}

QString PhoneCommands::obey(const std::shared_ptr<SimulatedPhone>& phone, const QString& verb,
                            const QStringList& words)
{
    if (verb == u"writes")
        return QString::number(phone->writes());
    if (verb == u"attach") {
        _usb.attach(phone);
    } else if (verb == u"detach") {
        _usb.detach(phone);
    } else if (verb == u"paired") {
        _usb.tellPaired(phone);
    } else if (const auto fault = faultsByName().find(verb); fault != faultsByName().end()) {
        phone->changeFaults([&](PhoneFaults& faults) { fault->second(faults, words); });
    } else {
        return QStringLiteral("there is no such command");
    }
    return QStringLiteral("ok");
}
