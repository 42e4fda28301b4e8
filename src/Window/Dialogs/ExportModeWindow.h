#pragma once

#include "Window/Dialogs/ScrollingDialog.h"

#include <functional>
#include <optional>

class RadioMatrix;

/// Asks before a media export whether the files also go to the music application.
class ExportModeWindow final : public ScrollingDialog
{
    Q_OBJECT
public:
    /// `handsOver`: the choice that is made at first, as soon as it is known to be one.
    explicit ExportModeWindow(bool handsOver, QWidget* parent = nullptr);

    /// Shows the question, modally, and deletes itself when it is closed. `reply` gets whether
    /// to add the files, or no answer when the export is given up. Where no music application
    /// can take them, that choice is there but cannot be made.
    void askForHandOver(const std::function<void(const std::optional<bool>& handsOver)>& reply);

private:
    /// Makes the second row a choice, or says why it is none.
    void showMusicApplication(const QString& name);

    RadioMatrix* _mExportMode;
    bool _handsOver;
};
