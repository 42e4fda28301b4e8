#pragma once

#include "Export/Config.h"
#include "Window/Dialogs/ScrollingDialog.h"

#include <array>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class RadioMatrix;

/// The preferences: a destination folder for each category, the rule for name clashes, and
/// whether to look for new versions.
class PreferencesWindow final : public ScrollingDialog
{
    Q_OBJECT
public:
    /// `canCheckVersion`: whether this program knows where to ask for new versions. Without that
    /// the switch cannot be used, and says why.
    PreferencesWindow(Config& config, bool canCheckVersion, QWidget* parent = nullptr);

    /// Fills the fields from the settings and shows the window, modally; it deletes itself.
    void showPref();

public Q_SLOTS:
    /// Stores what the person changed of the fields, the rule and the switch, and closes. What
    /// changed elsewhere while the window stood there stays.
    void endPref();
    /// Asks for the folder of a field. Tags count from 1 here; any other tag belongs to no field,
    /// and what is chosen goes nowhere.
    void selectBackupFolder(int tag);

private:
    void setUpSwitch(bool canCheckVersion);
    void validate();
    [[nodiscard]] int rowOfRule() const;

    Config& _config;
    std::array<QString, Sections::Count> _shownFolders; ///< as the fields stood at first
    int _shownRow = 0;
    bool _shownCheck = true;
    std::array<QLineEdit*, Sections::Count> _fields{};
    RadioMatrix* _mCopyRule;
    QCheckBox* _btnCheckVersion;
    QLabel* _hint;
    QPushButton* _done = nullptr;
};
