// Whether a folder can hold the configuration data.
#pragma once

#include "foundation/vunicodestring.h"

namespace connectdialog {

class VDataExchange;
class VWindow;

/// When data goes to the members: refuses a path that is not absolute, and a folder that cannot be made or written to,
/// with a message over `parent` and the focus on the control `id`. A folder that is missing is made, with those above
/// it.
// The name is the toolkit's own of old.
// NOLINTNEXTLINE(readability-identifier-naming)
void VDDV_ValidateConfigFolder(VDataExchange& exchange, const VUnicodeString& path, int id, VWindow* parent);

}  // namespace connectdialog
