#pragma once

#include <QString>

class QUrl;
class QWidget;

/// Tells a person that there is a newer version.
namespace NewVersionAlert
{
/// Shows the alert, modally; nothing waits for its end. "Download" opens the page in the person's
/// browser.
void show(QWidget& window, const QString& version, const QUrl& downloadPage);
} // namespace NewVersionAlert
