// The application's name, which the host says once at its start.
#pragma once

#include "foundation/vunicodestring.h"

namespace connectdialog {

/// The name that the host gave, "NorHalden" or "Tessaly" for instance; empty before SetAppName.
VUnicodeString VGetAppName();
void SetAppName(const VUnicodeString& name);
/// Whether that is a terminal application: the name of each holds "Halden".
bool IsTerminalHost();

}  // namespace connectdialog
