#include "Window/Dialogs/ProblemAlert.h"

#include "Window/Dialogs/Alert.h"

namespace
{
constexpr std::size_t MostInFront = 8; ///< what fits a small screen; the rest stands behind
}

void ProblemAlert::show(QWidget& window, const std::vector<Problem>& problems)
{
    QStringList words;
    QStringList exact;
    for (const Problem& problem : problems) {
        words.append(problem.words);
        exact.append(problem.text());
    }
    if (problems.size() > MostInFront) {
        words.resize(MostInFront);
        words.append(tr("and %n more", nullptr, int(problems.size() - MostInFront)));
    }
    auto* box =
        Alert::make(window, QStringLiteral("_alertProblems"), QMessageBox::Warning,
                    tr("Not everything could be read"),
                    tr("What is shown is what could be read of the device. It may hold more."),
                    words.join(u'\n'));
    box->setDetailedText(exact.join(u'\n'));
    box->show();
}
