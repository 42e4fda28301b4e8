#include "Window/Update/NewVersionAlert.h"

#include "Base/Program.h"
#include "Platform/Workspace.h"

#include <QCoreApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QUrl>

namespace
{
struct Words {
    Q_DECLARE_TR_FUNCTIONS(NewVersionAlert)
};
} // namespace

void NewVersionAlert::show(QWidget& window, const QString& version, const QUrl& downloadPage)
{
    const QString title = Words::tr("%1 New Version").arg(Program::briefName());
    auto* box =
        new QMessageBox(QMessageBox::Information, title, title, QMessageBox::NoButton, &window);
    box->setObjectName(QStringLiteral("_alertNewVersion"));
    // What the service says is a text, whatever it looks like. The box's own format does not
    // reach its second text.
    box->setInformativeText(Words::tr("New version %1 found!").arg(version));
    const auto labels = box->findChildren<QLabel*>();
    for (QLabel* label : labels)
        label->setTextFormat(Qt::PlainText);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::ApplicationModal);
    box->setDefaultButton(box->addButton(Words::tr("&Download"), QMessageBox::AcceptRole));
    box->addButton(Words::tr("&Cancel"), QMessageBox::RejectRole);
    QObject::connect(box, &QMessageBox::accepted, box,
                     [downloadPage] { Workspace::openAddress(downloadPage); });
    box->show();
}
