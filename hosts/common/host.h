// A host's main function.
#pragma once

#include "hosts/common/hostkind.h"

namespace connectdialog {
class VWindow;
}

namespace connectdialog::hosts {

/// Does what the command line asks for; gives the exit code.
int RunHost(const HostKind& kind, int argc, char** argv);

/// The help of the connect dialog, as a HelpFunction: a box with its keys. The numbers mean nothing to it.
void ShowHelp(VWindow* window, unsigned, unsigned long);

}  // namespace connectdialog::hosts
