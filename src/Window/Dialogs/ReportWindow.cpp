#include "Window/Dialogs/ReportWindow.h"

#include "Window/Dialogs/Alert.h"
#include "Window/ScreenRoom.h"
#include "Window/Views/RowTableView.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{
constexpr QSize UsualSize(860, 460);
constexpr int TitleWidth = 180;
constexpr int OutcomeWidth = 160;
constexpr int WhyWidth = 230;
constexpr int PathWidth = 180;
} // namespace

ReportWindow::ReportWindow(const ExportReport& report, QWidget* parent)
    : QDialog(parent)
    , _report(report)
    , _model(report.items())
{
    setObjectName(QStringLiteral("_winReport"));
    setWindowModality(Qt::ApplicationModal);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Report of the last export"));
    auto* summary = new QLabel(
        tr("%1 of %2 items were not copied").arg(report.notCopiedCount()).arg(report.copyCount()));
    auto* all = new QCheckBox(tr("Show &all items"));
    all->setObjectName(QStringLiteral("_btnAllItems"));
    connect(all, &QCheckBox::toggled, &_model, &ReportModel::showAll);
    auto* table = new RowTableView;
    table->setObjectName(QStringLiteral("_tvReport"));
    table->setAccessibleName(tr("Items"));
    table->setModel(&_model);
    table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    table->setFrameShape(QFrame::StyledPanel);
    table->horizontalHeader()->resizeSection(ReportModel::Item, TitleWidth);
    table->horizontalHeader()->resizeSection(ReportModel::Outcome, OutcomeWidth);
    table->horizontalHeader()->resizeSection(ReportModel::Why, WhyWidth);
    table->horizontalHeader()->resizeSection(ReportModel::From, PathWidth);
    table->horizontalHeader()->setStretchLastSection(true);
    auto* buttons = new QDialogButtonBox;
    buttons->addButton(tr("&Close"), QDialogButtonBox::RejectRole);
    buttons->addButton(tr("&Save…"), QDialogButtonBox::AcceptRole);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(buttons, &QDialogButtonBox::accepted, this, &ReportWindow::save);

    auto* head = new QHBoxLayout;
    head->addWidget(summary, 1);
    head->addWidget(all);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(head);
    layout->addWidget(table);
    layout->addWidget(buttons);
    resize(UsualSize.boundedTo(ScreenRoom::of(*this)));
}

void ReportWindow::save()
{
    const QString path = QFileDialog::getSaveFileName(
        this, tr("Save the report"), QDir::home().filePath(QStringLiteral("export-report.jsonl")));
    if (path.isEmpty())
        return;
    const QString problem = _report.writeTo(path);
    if (!problem.isEmpty())
        Alert::show(*this, QStringLiteral("_alertSave"), tr("The report could not be saved"),
                    problem);
}
