#pragma once

#include <QString>

class QWidget;

/// Something that a person is told and closes with "OK".
namespace Alert
{
/// Shows the alert, modally; nothing waits for its end. A text that says the same as the title
/// stands there once.
void show(QWidget& window, const QString& name, const QString& title, const QString& text);
} // namespace Alert
