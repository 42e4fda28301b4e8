#include "Window/Update/UpdateAddresses.h"

UpdateAddresses UpdateAddresses::built()
{
    return {QUrl(QStringLiteral(ZELL_UPDATE_ENDPOINT)), QStringLiteral(ZELL_UPDATE_NAMESPACE),
            QUrl(QStringLiteral(ZELL_UPDATE_DOWNLOAD_PAGE)), QStringLiteral(ZELL_UPDATE_PAGE_HOST)};
}

bool UpdateAddresses::areComplete() const
{
    const bool isWeb =
        endpoint.scheme() == QLatin1String("http") || endpoint.scheme() == QLatin1String("https");
    return isWeb && !endpoint.host().isEmpty() && !namespaceUri.isEmpty() &&
           !downloadPage.isEmpty();
}
