#pragma once

#include "Device/Problem.h"
#include "Export/ExportReport.h"

#include <QString>

#include <memory>
#include <vector>

/// An export that has come to its end, and all there is to say about it. Nothing in it changes any
/// more; whoever shows it has a share of it, however many exports follow.
struct FinishedExport {
    std::shared_ptr<const ExportReport> report;
    std::vector<ReaderProblem> problems; ///< what could not be read of the device it came from
    bool canceled = false;
    QString whyGone; ///< why nothing more came from the device; null while it is there
};
