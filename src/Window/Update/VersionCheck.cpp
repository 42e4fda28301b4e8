#include "Window/Update/VersionCheck.h"

#include "Base/Fault.h"
#include "Base/Program.h"
#include "Platform/Host.h"
#include "Window/Update/NumericOrder.h"
#include "Window/Update/VersionService.h"

namespace
{
constexpr int VersionType = 0;
}

VersionCheck::VersionCheck(const UpdateAddresses& addresses, NewVersion newVersion)
    : _newVersion(std::move(newVersion))
{
    if (!addresses.areComplete())
        return;
    _thread = std::jthread([this, addresses](const std::stop_token& stop) {
        Fault::guard([&] { checkVersion(stop, addresses); });
    });
}

bool VersionCheck::isNewer(const QString& version, const QString& current)
{
    return compareNumerically(version, current) > 0;
}

void VersionCheck::checkVersion(const std::stop_token& stop, const UpdateAddresses& addresses)
{
    const QString ipAddress = Host::currentIP4Address();
    const QString computerName = Host::computerName();
    const VersionService service(addresses, WebCall(stop));
    const QString version = service.getVersion(Program::serviceName(), Program::version(),
                                               computerName, VersionType, ipAddress);
    if (version.isNull() || !isNewer(version, Program::version()))
        return;
    _mailbox.post([this, version] { _newVersion(version); });
}
