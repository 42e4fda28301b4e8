#pragma once

#include <QString>

/// What the program is called and which version it is.
class Program
{
public:
    /// Short name: menus, about box, the application-support folder, the default destinations.
    static QString briefName();
    /// Full product name: the window's title.
    static QString fullName();
    /// The name that the service of new versions knows the program by.
    static QString serviceName();
    static QString version();
    /// The line about rights in the about box.
    static QString notice();
    /// Where a person sends a crash report.
    static QString supportAddress();
};
