#pragma once

#include "Export/Config.h"

#include <QDialog>

#include <array>

class QLabel;
class QLineEdit;
class QPushButton;
class RadioMatrix;

/// The preferences: a destination folder for each category, and the rule for name clashes.
class PreferencesWindow final : public QDialog
{
    Q_OBJECT
public:
    explicit PreferencesWindow(Config& config, QWidget* parent = nullptr);

    /// Fills the fields from the settings and shows the window, modally; it deletes itself.
    void showPref();

public Q_SLOTS:
    /// Stores all fields and the rule, and closes.
    void endPref();
    /// Asks for the folder of a field. Tags count from 1 here; any other tag belongs to no field,
    /// and what is chosen goes nowhere.
    void selectBackupFolder(int tag);

private:
    void validate();

    Config& _config;
    std::array<QLineEdit*, Config::FolderCount> _fields{};
    RadioMatrix* _mCopyRule;
    QLabel* _hint;
    QPushButton* _done = nullptr;
};
