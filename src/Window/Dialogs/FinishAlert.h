#pragma once

#include <QCoreApplication>
#include <QString>

#include <functional>
#include <memory>

struct FinishedExport;
class QWidget;

/// How an export ended: in one line, in the numbers behind it, and with ways to look at the report
/// and at the files.
class FinishAlert
{
    Q_DECLARE_TR_FUNCTIONS(FinishAlert)

public:
    /// What people have always been told first.
    static QString firstLine(const FinishedExport& ended);
    /// The truth in a few words: also that nothing was copied, or that the device has gone.
    static QString title(const FinishedExport& ended);
    /// What was copied and what was not, and why, one sentence or reason a line.
    static QString details(const FinishedExport& ended);

    /// Shows the alert, modally; nothing waits for its end. `showReport` opens the report.
    static void show(QWidget& window, const FinishedExport& ended,
                     const std::function<void()>& showReport);

private:
    static void openFolder(QWidget& window, const QString& folder);
};
