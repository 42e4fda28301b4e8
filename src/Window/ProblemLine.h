#pragma once

#include "Device/Problem.h"

#include <QWidget>

#include <vector>

class QLabel;
class QPushButton;

/// A line with a sign above the content: not all of what is shown there could be read. Hidden while
/// all is well.
class ProblemLine final : public QWidget
{
    Q_OBJECT
public:
    explicit ProblemLine(QWidget* parent = nullptr);

    void setProblems(std::vector<Problem> problems);

private:
    QLabel* _words;
    QPushButton* _details;
    std::vector<Problem> _problems;
};
