#pragma once

#include <QString>

#include <functional>

struct RaisedException;

/// Builds the report of one exception and shows it.
class FaultReport
{
public:
    /// Shows a text to the person, some time from now if need be.
    using Alert = std::function<void(const QString& text)>;

    /// Shows the report at once, by way of `alert`.
    FaultReport(const RaisedException& exception, QString emailAddress, Alert alert);

    /// The names of the functions that the exception came from, each followed by a carriage
    /// return. An exception without addresses gets those of the calling thread.
    static QString stackTrace(const RaisedException& exception);

private:
    void displayCrashReport(const RaisedException& exception) const;

    QString _emailAddress;
    Alert _alert;
};
