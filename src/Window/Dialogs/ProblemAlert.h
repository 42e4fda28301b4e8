#pragma once

#include "Device/Problem.h"

#include <QCoreApplication>

#include <vector>

class QWidget;

/// What could not be read of a device, in words, with the exact texts behind them.
class ProblemAlert
{
    Q_DECLARE_TR_FUNCTIONS(ProblemAlert)

public:
    /// Shows the alert, modally; nothing waits for its end.
    static void show(QWidget& window, const std::vector<Problem>& problems);
};
