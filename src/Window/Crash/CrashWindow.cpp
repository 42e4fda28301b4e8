#include "Window/Crash/CrashWindow.h"

#include "Window/ScreenRoom.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStringList>
#include <QVBoxLayout>

namespace
{
constexpr QSize UsualSize(640, 420);
constexpr int MostWaiting = 8;

/// The report on the screen first, then those that wait.
QStringList& reports()
{
    static QStringList list;
    return list;
}
} // namespace

CrashWindow::CrashWindow(QWidget* parent, const QString& text)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("_alertCrash"));
    setWindowModality(Qt::ApplicationModal);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Unexpected Error"));
    auto* title = new QLabel(windowTitle());
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    auto* report = new QPlainTextEdit;
    report->setObjectName(QStringLiteral("_tfReport"));
    report->setAccessibleName(tr("Report"));
    report->setReadOnly(true);
    report->setTabChangesFocus(true);
    // The report's lines end in carriage returns, which are no lines to a text field.
    report->setPlainText(QString(text).replace(u'\r', u'\n'));
    auto* buttons = new QDialogButtonBox;
    QPushButton* ok = buttons->addButton(tr("&OK"), QDialogButtonBox::AcceptRole);
    ok->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(title);
    layout->addWidget(report);
    layout->addWidget(buttons);
    ok->setFocus();
    resize(UsualSize.boundedTo(ScreenRoom::of(*this)));
}

void CrashWindow::show(const QString& text)
{
    QStringList& list = reports();
    if (list.contains(text) || list.size() > MostWaiting)
        return;
    list.append(text);
    if (list.size() == 1)
        showNext();
}

void CrashWindow::showNext()
{
    // Its place is in front of whatever the person sees now, another dialog included.
    QWidget* parent = QApplication::activeModalWidget();
    if (!parent)
        parent = QApplication::activeWindow();
    auto* window = new CrashWindow(parent, reports().first());
    // By destruction, which comes with the parent's as well.
    connect(window, &QObject::destroyed, qApp, [] {
        reports().removeFirst();
        if (!reports().isEmpty() && !QCoreApplication::closingDown())
            showNext();
    });
    window->QDialog::show();
}
