#pragma once

#include <QString>

#include <exception>
#include <string>
#include <vector>

/// A failure that nobody nearby can mend: a name that code can test, a reason that people can
/// read, and the return addresses of the place it was thrown from, innermost first.
class Exception : public std::exception
{
public:
    Exception(QString name, QString reason);

    [[nodiscard]] const QString& name() const noexcept { return _name; }
    [[nodiscard]] const QString& reason() const noexcept { return _reason; }
    [[nodiscard]] const std::vector<void*>& returnAddresses() const noexcept
    {
        return _returnAddresses;
    }
    /// "name: reason" in UTF-8.
    [[nodiscard]] const char* what() const noexcept override { return _what.c_str(); }

private:
    QString _name;
    QString _reason;
    std::string _what;
    std::vector<void*> _returnAddresses;
};
