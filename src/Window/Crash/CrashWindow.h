#pragma once

#include <QDialog>

/// The alert with a crash report. The text is there to be copied into a mail.
class CrashWindow final : public QDialog
{
    Q_OBJECT
public:
    /// Shows the report, modally; nothing waits for its end. While a report is shown others wait
    /// for their turn; one that says the same as another that waits is dropped, and so is what
    /// comes when many wait, or a fault in drawing would never leave the person alone.
    static void show(const QString& text);

private:
    explicit CrashWindow(QWidget* parent, const QString& text);

    static void showNext();
};
