// Making texts fit into the controls that show them.
#pragma once

#include "foundation/vunicodestring.h"

namespace connectdialog {

class IDialogWindow;

/// The path as a control of the window has room for it. What does not fit gives way to "...": first the names in the
/// middle, then the first name, at last the end of the leaf. Where there is no such control the path stays whole.
VUnicodeString AbbreviatePathname(const IDialogWindow& window, int id, const VUnicodeString& path);

/// Doubles each "&", which a label would take for the mark of a letter.
VUnicodeString EscapeAmpersand(const VUnicodeString& text);

}  // namespace connectdialog
