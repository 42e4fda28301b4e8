#pragma once

#include <QString>

/// Facts about the computer. Any thread.
class Host
{
public:
    /// Free physical memory in MiB; 2147483647.0 when the system does not tell.
    static double availableMemory();
    /// The computer's name as its owner set it.
    static QString computerName();
    /// The first IPv4 address of the first network interface that is up and has one, loopback
    /// left out, in dotted text; "" without a network.
    static QString currentIP4Address();
};
