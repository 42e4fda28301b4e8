#pragma once

#include <QIcon>
#include <QWidget>

class QLabel;
class QProgressBar;
class QPushButton;
class QToolButton;

/// The foot of the window: what is going on, how far it is, and the two buttons.
class StatusBar final : public QWidget
{
    Q_OBJECT
public:
    explicit StatusBar(QWidget* parent = nullptr);

    void setInfo(const QString& text);
    /// The line about items that were not copied; an empty text hides it.
    void setFailureLine(const QString& text);
    [[nodiscard]] QString failureLine() const;
    /// Shows the level indicator from 0 to `maximum`, or hides it.
    void showLevel(int maximum);
    void setLevel(double value);
    void hideLevel();
    /// What the Export button does now: it stops a job that runs.
    void setExporting(bool exporting);
    void setButtonsEnabled(bool exportEnabled, bool playEnabled);

Q_SIGNALS:
    void exportClicked();
    void playClicked();
    void failureLineClicked();

private:
    QLabel* _tfInfo;
    QToolButton* _failureLine;
    QProgressBar* _li;
    QPushButton* _btnPlay;
    QPushButton* _btnExport;
    QIcon _imgStart;
    QIcon _imgStop;
    int _items = 1; ///< what the level indicator counts to
};
