// A host's main function.
#pragma once

#include "hosts/common/hostkind.h"

namespace connectdialog::hosts {

/// Does what the command line asks for; gives the exit code.
int RunHost(const HostKind& kind, int argc, char** argv);

}  // namespace connectdialog::hosts
