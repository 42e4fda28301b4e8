#include "Window/Dialogs/Alert.h"

#include "Base/Expected.h"

#include <QLabel>

QMessageBox* Alert::make(QWidget& window, const QString& name, QMessageBox::Icon icon,
                         const QString& title, const QString& text, const QString& more)
{
    auto* box = new QMessageBox(icon, title, text, QMessageBox::Ok, &window);
    box->setObjectName(name);
    if (!more.isEmpty())
        box->setInformativeText(more);
    // The box's own format does not reach its second text.
    const auto labels = box->findChildren<QLabel*>();
    for (QLabel* label : labels)
        label->setTextFormat(Qt::PlainText);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::ApplicationModal);
    return box;
}

void Alert::show(QWidget& window, const QString& name, const QString& title, const QString& text)
{
    make(window, name, QMessageBox::Information, title, title, text == title ? QString() : text)
        ->show();
}

void Alert::showFailure(QWidget& window, const QString& name, const Status& status)
{
    if (!status)
        show(window, name, status.failure().words, status.failure().exact);
}
