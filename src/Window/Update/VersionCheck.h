#pragma once

#include "Base/Mailbox.h"
#include "Window/Update/UpdateAddresses.h"

#include <functional>
#include <thread>

/// Asks once, on a thread of its own, whether there is a newer version. Says so if there is, and
/// nothing in any other case. Lives on the window's thread; destroying it ends the question.
class VersionCheck
{
public:
    /// Called on the window's thread.
    using NewVersion = std::function<void(const QString& version)>;

    /// Starts at once. With incomplete addresses nothing is asked, and nothing leaves the
    /// computer.
    VersionCheck(const UpdateAddresses& addresses, NewVersion newVersion);

    /// Whether a version is newer than this program.
    static bool isNewer(const QString& version, const QString& current);

private:
    void checkVersion(const std::stop_token& stop, const UpdateAddresses& addresses);

    NewVersion _newVersion;
    Mailbox _mailbox;
    std::jthread _thread; // last: it ends before what it uses goes
};
