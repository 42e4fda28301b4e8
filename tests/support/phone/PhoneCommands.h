#pragma once

#include "support/phone/SimulatedUsb.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

/// What a person, or another program, can tell simulated phones to do, one line each.
class PhoneCommands
{
public:
    PhoneCommands(SimulatedUsb& usb, std::vector<std::shared_ptr<SimulatedPhone>> phones);

    /// Obeys one line and gives a line of answer: "ok", a number, or what is wrong.
    QString run(const QString& line);
    [[nodiscard]] bool isOver() const { return _isOver; }
    /// The commands, for people.
    static QString help();

private:
    QString obey(const std::shared_ptr<SimulatedPhone>& phone, const QString& verb,
                 const QStringList& words);

    SimulatedUsb& _usb;
    std::vector<std::shared_ptr<SimulatedPhone>> _phones;
    bool _isOver = false;
};
