#pragma once

#include "Window/Models/ReportModel.h"

#include <QDialog>

#include <memory>

class QLayout;
struct FinishedExport;

/// The report of the last export: what was not copied and why, or all items; and at its head what
/// could not be read of the device at all.
class ReportWindow final : public QDialog
{
    Q_OBJECT
public:
    /// Has a share of the report: another export may begin, and end, while the window is there.
    explicit ReportWindow(std::shared_ptr<const FinishedExport> ended, QWidget* parent = nullptr);

private:
    QLayout* makeHead();
    QWidget* makeTable();
    void save();

    std::shared_ptr<const FinishedExport> _ended;
    ReportModel _model;
};
