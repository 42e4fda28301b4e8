// The user's guide calls the things on the screen by the names that they have there.

#include "Export/ExportReport.h"
#include "Window/Crash/CrashWindow.h"
#include "Window/Dialogs/CopyRuleWindow.h"
#include "Window/Dialogs/ExportModeWindow.h"
#include "Window/Dialogs/FinishAlert.h"
#include "Window/Dialogs/PreferencesWindow.h"
#include "Window/Dialogs/ReportWindow.h"
#include "Window/Update/NewVersionAlert.h"
#include "support/WindowFixture.h"

#include <QAbstractButton>
#include <QAction>
#include <QGroupBox>
#include <QRegularExpression>
#include <QUrl>

#include <algorithm>

namespace
{
/// What the guide sets in bold without a full stop or the like at its end: that opens a paragraph.
QStringList labelsInGuide()
{
    static const QRegularExpression bold("\\*\\*(.+?)\\*\\*",
                                         QRegularExpression::DotMatchesEverythingOption);
    const QString guide =
        QString::fromUtf8(Files::read(QStringLiteral(ZELL_SOURCES "/docs/help.md")));
    QStringList labels;
    for (auto match = bold.globalMatch(guide); match.hasNext();) {
        const QString label = match.next().captured(1).simplified();
        if (!QString(".,?:!").contains(label.back()))
            labels.append(label);
    }
    labels.removeDuplicates();
    return labels;
}

class HelpLabelsTest : public WindowFixture
{
protected:
    /// All that can be read on the window and on everything it opens.
    QStringList shownLabels()
    {
        QStringList labels = {"Trust"}; // a button of the phone
        openOnPlayer();
        const QAbstractItemModel* sources = window().sources().outlineView()->model();
        for (int row = 0; row < sources->rowCount(); ++row)
            labels.append(sources->index(row, 0).data().toString().section(" (", 0, 0));
        window().status().setExporting(true);
        labels.append(part<QPushButton>("_btnExport")->text());
        window().status().setExporting(false);

        const auto ended = std::make_shared<FinishedExport>();
        const auto report = std::make_shared<ExportReport>();
        ExportItem copied;
        copied.to = out("Music/One.mp3");
        report->add(copied);
        ended->report = report;
        (new PreferencesWindow(Config::instance(), true, &window()))->showPref();
        (new CopyRuleWindow(&window()))->ask({}, KeepBothRule, [](const auto&) {});
        (new ExportModeWindow(false, &window()))->askForHandOver([](const auto&) {});
        (new ReportWindow(ended, &window()))->show();
        FinishAlert::show(window(), *ended, [] {});
        CrashWindow::show("a report");
        NewVersionAlert::show(window(), "9", QUrl("http://zell.example/"));
        for (const QWidget* top : QApplication::topLevelWidgets())
            appendLabelsOf(*top, labels);
        return labels.replaceInStrings("&", "");
    }

private:
    static void appendLabelsOf(const QWidget& top, QStringList& labels)
    {
        for (const auto* button : top.findChildren<QAbstractButton*>())
            labels.append(button->text());
        for (const auto* box : top.findChildren<QGroupBox*>())
            labels.append(box->title());
        for (const auto* action : top.findChildren<QAction*>())
            labels.append(action->text());
    }
};

/// An ellipsis in the guide stands for the rest of a long label.
bool isShown(const QString& label, const QStringList& shown)
{
    return std::any_of(shown.begin(), shown.end(), [&](const QString& text) {
        return text == label || text == label + u'…' ||
               (label.endsWith(u'…') && text.startsWith(label.chopped(1)));
    });
}
} // namespace

TEST_F(HelpLabelsTest, EachLabelThatTheGuideNamesIsOnTheScreen)
{
    const QStringList named = labelsInGuide();
    EXPECT_GT(named.size(), 25);
    const QStringList shown = shownLabels();
    for (const QString& label : named)
        EXPECT_TRUE(isShown(label, shown)) << label.toStdString();
}

TEST_F(HelpLabelsTest, EachShortcutThatTheGuideNamesIsOneOfTheMenu)
{
    const QString guide =
        QString::fromUtf8(Files::read(QStringLiteral(ZELL_SOURCES "/docs/help.md")));
    openOnPlayer();
    QStringList keys = {"Ctrl+A", "Space",    "Ctrl",     "Shift", // of lists and fields,
                        "Esc",    "Shift+F3", "Alt+Left", "F3"};   // and of the guide's window
    for (const auto* action : window().findChildren<QAction*>()) {
        for (const QKeySequence& sequence : action->shortcuts())
            keys.append(sequence.toString());
    }
    static const QRegularExpression shortcut("`((?:Ctrl|Shift|Alt|Esc|Space|F\\d)[^`]*)`");
    int named = 0;
    for (auto match = shortcut.globalMatch(guide); match.hasNext(); ++named) {
        const QString key = match.next().captured(1);
        EXPECT_TRUE(keys.contains(key)) << key.toStdString();
    }
    EXPECT_GT(named, 15);
}
