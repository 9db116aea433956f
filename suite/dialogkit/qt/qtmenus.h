// Menus of the library as menus of the toolkit.
#pragma once

#include <vector>

#include "imports/dialogkit/vpopupmenu.h"

class QMenu;
class QMenuBar;
class QWidget;

namespace connectdialog {

/// Takes its actions and menus from a bar. The one whose choice led here may still be at work: they go later.
void RemoveActions(QWidget& bar);

/// Adds the entries; their actions have the command as data.
void FillMenu(QMenu& menu, const std::vector<VPopupMenu::Entry>& entries);

/// A menu bar from then on shows `menu`, and no more what it showed before (`shown`, which becomes `menu`). Where only
/// states differ the menus stay, even one that is open.
void ShowMenuBar(QMenuBar& bar, VPopupMenu& shown, const VPopupMenu& menu);

}  // namespace connectdialog
