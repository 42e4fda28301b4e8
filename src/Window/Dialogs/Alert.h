#pragma once

#include <QMessageBox>
#include <QString>

class Status;

/// Something that a person is told and closes with "OK".
namespace Alert
{
/// An alert to be completed and shown: modal, and its own end. All of its texts are plain,
/// whatever a device has put into them.
QMessageBox* make(QWidget& window, const QString& name, QMessageBox::Icon icon,
                  const QString& title, const QString& text, const QString& more);
/// Shows the alert; nothing waits for its end. A text that says the same as the title stands there
/// once.
void show(QWidget& window, const QString& name, const QString& title, const QString& text);
/// The same about something that was not done; nothing where it was.
void showFailure(QWidget& window, const QString& name, const Status& status);
} // namespace Alert
