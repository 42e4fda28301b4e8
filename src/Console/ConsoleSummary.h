#pragma once

#include "Export/ExportReport.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

/// The closing words of an export: how many items had which end, what was the matter with those
/// that were not copied, and where all went.
class ConsoleSummary
{
    Q_DECLARE_TR_FUNCTIONS(ConsoleSummary)

public:
    explicit ConsoleSummary(const std::vector<ExportItem>& items);

    /// "97 copied, 2 failed".
    [[nodiscard]] QString counts() const;
    /// One line for each reason why items were not copied, the most frequent first.
    [[nodiscard]] QStringList reasons() const;

private:
    const std::vector<ExportItem>& _items;
};
