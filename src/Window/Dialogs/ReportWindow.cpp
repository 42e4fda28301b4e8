#include "Window/Dialogs/ReportWindow.h"

#include "Window/Dialogs/Alert.h"
#include "Window/FinishedExport.h"
#include "Window/ProblemLine.h"
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

ReportWindow::ReportWindow(std::shared_ptr<const FinishedExport> ended, QWidget* parent)
    : QDialog(parent)
    , _ended(std::move(ended))
    , _model(_ended->report->items())
{
    setObjectName(QStringLiteral("_winReport"));
    setWindowModality(Qt::ApplicationModal);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Report of the last export"));
    auto* problems = new ProblemLine;
    std::vector<Problem> list;
    for (const ReaderProblem& one : _ended->problems)
        list.push_back(one.problem);
    problems->setProblems(std::move(list));
    auto* buttons = new QDialogButtonBox;
    buttons->addButton(tr("&Close"), QDialogButtonBox::RejectRole);
    buttons->addButton(tr("&Save…"), QDialogButtonBox::AcceptRole);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(buttons, &QDialogButtonBox::accepted, this, &ReportWindow::save);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(problems);
    layout->addLayout(makeHead());
    layout->addWidget(makeTable());
    layout->addWidget(buttons);
    resize(UsualSize.boundedTo(ScreenRoom::of(*this)));
}

QLayout* ReportWindow::makeHead()
{
    auto* summary = new QLabel(tr("%1 of %2 items were not copied")
                                   .arg(_ended->report->notCopiedCount())
                                   .arg(_ended->report->copyCount()));
    auto* all = new QCheckBox(tr("Show &all items"));
    all->setObjectName(QStringLiteral("_btnAllItems"));
    connect(all, &QCheckBox::toggled, &_model, &ReportModel::showAll);
    auto* head = new QHBoxLayout;
    head->addWidget(summary, 1);
    head->addWidget(all);
    return head;
}

QWidget* ReportWindow::makeTable()
{
    auto* table = new RowTableView;
    table->setObjectName(QStringLiteral("_tvReport"));
    table->setAccessibleName(tr("Items"));
    table->setModel(&_model);
    table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    table->setFrameShape(QFrame::StyledPanel);
    QHeaderView* header = table->horizontalHeader();
    header->resizeSection(ReportModel::Item, TitleWidth);
    header->resizeSection(ReportModel::Outcome, OutcomeWidth);
    header->resizeSection(ReportModel::Why, WhyWidth);
    header->resizeSection(ReportModel::From, PathWidth);
    header->setStretchLastSection(true);
    return table;
}

void ReportWindow::save()
{
    const QString path = QFileDialog::getSaveFileName(
        this, tr("Save the report"), QDir::home().filePath(QStringLiteral("export-report.jsonl")));
    if (path.isEmpty())
        return;
    const QString problem = _ended->report->writeTo(path);
    if (!problem.isEmpty())
        Alert::show(*this, QStringLiteral("_alertSave"), tr("The report could not be saved"),
                    problem);
}
