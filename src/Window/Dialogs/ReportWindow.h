#pragma once

#include "Window/Models/ReportModel.h"

#include <QDialog>

class ExportReport;

/// The report of the last export: what was not copied and why, or all items.
class ReportWindow final : public QDialog
{
    Q_OBJECT
public:
    /// The report outlives the window.
    explicit ReportWindow(const ExportReport& report, QWidget* parent = nullptr);

private:
    void save();

    const ExportReport& _report;
    ReportModel _model;
};
