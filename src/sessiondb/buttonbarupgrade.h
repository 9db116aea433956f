// Moving the user's button bars of older versions to the present form.
#pragma once

#include "foundation/vunicodestring.h"

namespace connectdialog {

class VStringArray;

/// The key of the button bars; each is a value.
inline constexpr char16_t kButtonBarsKey[] = u"ButtonBarV3";

/// Fills the present key from the newest older one, unless the present one is there. The older keys stay. Called before
/// anything that may read a session, and cheap once it is done.
void UpgradeButtonBars();
/// Appends the names of the bars that the key holds, and "Default" at the end where it was not among them.
void EnumerateButtonBars(const char16_t* source, VStringArray& names);

}  // namespace connectdialog
