#pragma once

#include "Window/Update/UpdateAddresses.h"
#include "Window/Update/WebCall.h"

/// The web services that know the latest version. Each operation waits for its answer on the
/// calling thread; null stands for no answer of any use.
class VersionService
{
public:
    VersionService(UpdateAddresses addresses, WebCall call)
        : _addresses(std::move(addresses))
        , _call(std::move(call))
    {
    }

    /// The latest version, as the service writes it.
    [[nodiscard]] QString getVersion(const QString& productName, const QString& usingVersion,
                                     const QString& pcName, int versionType,
                                     const QString& ipAddress) const;
    /// What the page of a product says, for services that are nothing but such pages.
    [[nodiscard]] QString latestVersion(const QString& productName) const;

    /// The version in an answer to `getVersion`. Nobody vouches for what came: it is looked
    /// through once, within its own size, and nothing that it refers to is followed.
    static QString parseReply(const QByteArray& reply);

private:
    UpdateAddresses _addresses;
    WebCall _call;
};
