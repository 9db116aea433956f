// The menus, bars and keys of the main window.
#pragma once

#include <functional>

#include "imports/dialogkit/vpopupmenu.h"

namespace connectdialog {
class IFrameWindow;
}

namespace connectdialog::hosts {

/// Whether the user can choose a command now.
using IsCommandEnabled = std::function<bool(int command)>;

/// Gives the window its menu bar, its toolbar and its accelerators; again whenever what is enabled changed.
void ShowMainMenus(IFrameWindow& window, const IsCommandEnabled& isEnabled);

/// The menu of the list.
VPopupMenu MakeListMenu(const IsCommandEnabled& isEnabled);

}  // namespace connectdialog::hosts
