#pragma once

#include <QString>
#include <QUrl>

/// Where the program asks for new versions and finds them. Whoever builds the program says so;
/// see the options ZELL_UPDATE_... of the build.
struct UpdateAddresses {
    QUrl endpoint;        ///< of the service that is asked
    QString namespaceUri; ///< the service's own root
    QUrl downloadPage;    ///< what a person is shown
    QString pageHost;     ///< of the pages that name a version each

    /// What this program was built with.
    static UpdateAddresses built();
    /// Without these nothing is asked: no call could be made, or nothing would follow from it.
    [[nodiscard]] bool areComplete() const;
};
