#pragma once

#include <QIcon>
#include <QWidget>

class ExportButton;
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
    [[nodiscard]] QString info() const;
    /// The line about items that were not copied; an empty text hides it.
    void setFailureLine(const QString& text);
    [[nodiscard]] QString failureLine() const;
    /// Shows the level indicator from 0 to `maximum`, or hides it.
    void showLevel(int maximum);
    void setLevel(double value);
    void hideLevel();
    /// What the Export button does now: it stops a job that runs.
    void setExporting(bool exporting);
    /// How many items the Export button would export, and how many more are checked where it does
    /// not reach.
    void setChosen(int chosen, int elsewhere);
    void setButtonsEnabled(bool exportEnabled, bool playEnabled);

Q_SIGNALS:
    /// `byKey`: by any other way than the mouse.
    void exportClicked(bool byKey);
    void playClicked();
    void failureLineClicked();

private:
    QLayout* makeLines();
    void showButton();

    QLabel* _tfInfo;
    QLabel* _elsewhere;
    QToolButton* _failureLine;
    QProgressBar* _li;
    QPushButton* _btnPlay;
    ExportButton* _btnExport;
    QIcon _imgStart;
    QIcon _imgStop;
    bool _isExporting = false;
    int _chosen = 0;
    int _items = 1; ///< what the level indicator counts to
};
