// The tray launcher: an icon in the tray whose menu is the session tree.
#pragma once

namespace connectdialog::hosts {

/// Does what the command line asks for; gives the exit code. Sessions on it, as a shortcut has them, are norhalden's.
int RunTrayLauncher(int argc, char** argv);

}  // namespace connectdialog::hosts
