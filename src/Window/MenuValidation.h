#pragma once

#include "Window/Commands.h"

#include <QString>

/// What the window shows, as far as menus depend on it.
struct MenuState {
    bool device = false;           ///< one is chosen
    bool playlistSelected = false; ///< in the source list
    bool albumSelected = false;    ///< in the source list
    bool cameraRoll = false;       ///< the device has one
    bool voiceMemos = false;       ///< the device has some place for them
    bool tracksShown = false;      ///< the table has rows
    bool trackChecked = false;     ///< one of its rows at least
    bool trackRowSelected = false;
    bool photosShown = false;
    bool photoSelected = false;
    bool canShowBrowser = false;
    bool browserHidden = false; ///< by the setting
    bool exporting = false;
    bool reportThere = false; ///< of the last export
};

namespace MenuValidation
{
/// Whether a menu item can be chosen.
bool isEnabled(Command command, const MenuState& state);
/// The title of the item that shows and hides the browser.
QString browserTitle(const MenuState& state);
} // namespace MenuValidation
