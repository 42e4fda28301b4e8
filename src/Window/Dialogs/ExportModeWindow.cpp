#include "Window/Dialogs/ExportModeWindow.h"

#include "Base/Program.h"
#include "Platform/MusicLibrary.h"
#include "Window/Dialogs/RadioMatrix.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace
{
constexpr int FoldersAndMusicApplication = 1; ///< the row
}

ExportModeWindow::ExportModeWindow(bool handsOver, QWidget* parent)
    : ScrollingDialog(parent)
    , _mExportMode(new RadioMatrix(
          {tr("To &folders only"), tr("To folders, and add to the &music application")}))
    , _handsOver(handsOver)
{
    setObjectName(QStringLiteral("_winExportMode"));
    setWindowTitle(Program::briefName());
    setWindowModality(Qt::ApplicationModal);
    setAttribute(Qt::WA_DeleteOnClose);
    _mExportMode->setObjectName(QStringLiteral("_mExportMode"));
    _mExportMode->setAccessibleName(tr("Export mode"));
    // The answer may take its time, and the question does not wait for it.
    _mExportMode->findChildren<QRadioButton*>().at(FoldersAndMusicApplication)->setEnabled(false);
    MusicLibrary::findApplication(this,
                                  [this](const QString& name) { showMusicApplication(name); });
    auto* question = new QLabel(tr("Where do you want to export to?"));
    QFont bold = question->font();
    bold.setBold(true);
    question->setFont(bold);

    auto* buttons = new QDialogButtonBox;
    buttons->addButton(tr("&Export"), QDialogButtonBox::AcceptRole)->setDefault(true);
    buttons->addButton(tr("&Cancel"), QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(20, 20, 20, 8);
    layout->setSpacing(14);
    layout->addWidget(question);
    layout->addWidget(_mExportMode);
    layout->addStretch();
    buttons->setContentsMargins(20, 6, 20, 16);
    setParts(content, buttons);
}

void ExportModeWindow::showMusicApplication(const QString& name)
{
    if (name.isEmpty()) {
        _mExportMode->disableRow(FoldersAndMusicApplication,
                                 tr("No music application that can take files was found."));
        return;
    }
    auto* row = _mExportMode->findChildren<QRadioButton*>().at(FoldersAndMusicApplication);
    row->setText(tr("To folders, and add to the &music of %1").arg(name));
    row->setEnabled(true);
    if (_handsOver)
        _mExportMode->setSelectedRow(FoldersAndMusicApplication);
}

void ExportModeWindow::askForHandOver(
    const std::function<void(const std::optional<bool>& handsOver)>& reply)
{
    connect(this, &QDialog::finished, this, [this, reply](int result) {
        if (result == Accepted)
            reply(_mExportMode->selectedRow() == FoldersAndMusicApplication);
        else
            reply(std::nullopt);
    });
    show();
}
