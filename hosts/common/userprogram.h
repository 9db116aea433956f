// Programs and scripts that menus and buttons start.
#pragma once

#include "foundation/vunicodestring.h"

namespace connectdialog::hosts {

/// Starts a program, which goes on by itself. One without a separator in its name is looked up in PATH; `arguments` are
/// words of a command line, and no shell sees them.
/// On failure: false, and `fault` tells why.
bool StartUserProgram(const VUnicodeString& program, const VUnicodeString& arguments, VUnicodeString& fault);

/// Starts a file as a program: a script says itself, in its first line, what reads it. `.` at its start stands for what
/// VSetDotPathBase said. On failure: as above.
bool StartScript(const VUnicodeString& file, VUnicodeString& fault);

}  // namespace connectdialog::hosts
