// From the blocks of a description to what windows show: menus, toolbars and keys.
#pragma once

#include <vector>

#include "imports/dialogkit/vpopupmenu.h"
#include "imports/dialogkit/vtoolbarstate.h"
#include "resources/accelerators.h"

namespace connectdialog {

class VCustomMenuToolbar;
class VMenuToolbar;

// Tool tips and the prompts of the status line are those of the registered commands.

/// The entries of a menu or popup, with their submenus. Requires: the block was registered in `commands`.
VPopupMenu MakePopupMenu(const VMenuToolbar& block, const VCustomMenuToolbar& commands);

/// The same for a menu bar: its own entries have no keys behind their labels, and there is no separator between them.
VPopupMenu MakeMenuBar(const VMenuToolbar& block, const VCustomMenuToolbar& commands);

/// The buttons of a toolbar, with the images of its description. A button whose image names a function has the picture
/// of GetStandardPicture; where there is none its tool tip is shown in its place, or else the function's name.
/// Requires: the block was registered in `commands`.
VToolbarState MakeToolbar(const VMenuToolbar& block, const VCustomMenuToolbar& commands);

/// The keys of all registered commands. A letter and a digit stand for their keys, whatever the letter's case; a
/// description cannot name other keys, and what does is left out.
std::vector<Accelerator> MakeAccelerators(const VCustomMenuToolbar& commands);

}  // namespace connectdialog
