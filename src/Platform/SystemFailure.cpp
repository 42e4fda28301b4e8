#include "Platform/SystemFailure.h"

#include <QCoreApplication>

#include <cerrno>
#include <system_error>

QString SystemFailure::text(int errorNumber)
{
    return QString::fromStdString(std::generic_category().message(errorNumber));
}

Failure SystemFailure::of(int errorNumber)
{
    using Kind = Failure::Kind;
    const QString exact = text(errorNumber);
    switch (errorNumber) {
    case ENOENT:
    case ENOTDIR:
        return {Kind::Missing,
                QCoreApplication::translate("SystemFailure", "There is no such file"), exact};
    case ENODEV:
    case ENXIO:
    case ENOTCONN:
    case ESTALE:
        return {Kind::Lost,
                QCoreApplication::translate("SystemFailure", "What holds the file has gone"),
                exact};
    // Both come from the way to a file alone, which says more than the system's words.
    case ELOOP:
        return {Kind::Refused,
                QCoreApplication::translate("SystemFailure",
                                            "There is a link on the way, and it is not followed"),
                {}};
    case EXDEV:
        return {Kind::Refused,
                QCoreApplication::translate("SystemFailure", "The path leads out of its folder"),
                {}};
    case EINVAL:
    case EISDIR:
        return {Kind::Refused,
                QCoreApplication::translate("SystemFailure", "This is no file that can be read"),
                exact};
    default:
        return {Kind::Unreadable,
                QCoreApplication::translate("SystemFailure", "The file could not be read"), exact};
    }
}

bool SystemFailure::isLink(const Failure& failure)
{
    return failure.kind == Failure::Kind::Refused && failure.words == of(ELOOP).words;
}
