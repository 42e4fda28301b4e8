#include "Window/Dialogs/FinishAlert.h"

#include "Export/ExportSummary.h"
#include "Platform/Workspace.h"
#include "Window/Dialogs/Alert.h"
#include "Window/FinishedExport.h"

#include <QPushButton>

#include <algorithm>

namespace
{
constexpr std::size_t MostProblems = 3;
} // namespace

void FinishAlert::openFolder(QWidget& window, const QString& folder)
{
    if (!Workspace::revealInFileManager(folder))
        Alert::show(window, QStringLiteral("_alertFolder"), tr("The folder could not be opened"),
                    folder);
}

QString FinishAlert::firstLine(const FinishedExport& ended)
{
    return ended.canceled ? tr("Export canceled!") : tr("Export finished!");
}

QString FinishAlert::title(const FinishedExport& ended)
{
    const ExportSummary summary(*ended.report);
    if (!ended.whyGone.isNull() && summary.notCopied() > 0)
        return ended.whyGone;
    if (ended.canceled || summary.notCopied() == 0)
        return firstLine(ended);
    if (summary.copied() + summary.skipped() == 0)
        return tr("Nothing could be copied");
    return tr("Finished, with %n item(s) not copied", nullptr, summary.notCopied());
}

QString FinishAlert::details(const FinishedExport& ended)
{
    QStringList lines = ExportSummary(*ended.report).lines();
    const std::size_t named = std::min(ended.problems.size(), MostProblems);
    if (named > 0)
        lines.append(tr("Not all of the device could be read:"));
    for (std::size_t i = 0; i < named; ++i)
        lines.append(QStringLiteral("• ") + ended.problems[i].problem.words);
    return lines.join(u'\n');
}

void FinishAlert::show(QWidget& window, const FinishedExport& ended,
                       const std::function<void()>& showReport)
{
    const QString first = firstLine(ended);
    const QString headline = title(ended);
    const bool isWell = headline == first;
    auto* box = Alert::make(window, QStringLiteral("_alertFinish"),
                            isWell ? QMessageBox::Information : QMessageBox::Warning, headline,
                            isWell ? first : first + u'\n' + headline, details(ended));
    box->setDefaultButton(QMessageBox::Ok);
    box->setEscapeButton(QMessageBox::Ok);
    QPushButton* report = box->addButton(tr("Show &Report"), QMessageBox::ActionRole);
    report->setObjectName(QStringLiteral("_btnShowReport"));
    QObject::connect(report, &QPushButton::clicked, &window, showReport);
    const QString folder = ExportSummary(*ended.report).folder();
    if (!folder.isNull()) {
        QPushButton* open = box->addButton(tr("Open &Folder"), QMessageBox::ActionRole);
        open->setObjectName(QStringLiteral("_btnOpenFolder"));
        QObject::connect(open, &QPushButton::clicked, &window,
                         [&window, folder] { openFolder(window, folder); });
    }
    box->show();
}
