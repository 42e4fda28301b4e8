#include "Window/Dialogs/Alert.h"

#include <QMessageBox>

void Alert::show(QWidget& window, const QString& name, const QString& title, const QString& text)
{
    auto* box = new QMessageBox(QMessageBox::Information, title, title, QMessageBox::Ok, &window);
    box->setObjectName(name);
    box->setTextFormat(Qt::PlainText);
    if (text != title)
        box->setInformativeText(text);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::ApplicationModal);
    box->show();
}
