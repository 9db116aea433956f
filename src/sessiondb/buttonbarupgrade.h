// Moving the user's button bars of older versions to the present form.
#pragma once

#include "foundation/vunicodestring.h"
#include "resources/storenames.h"

namespace connectdialog {

class VStringArray;

/// Fills the present key from the newest older one, unless the present one is there. The older keys stay. Called before
/// anything that may read a session: once it was found done, this process does not look into that store again.
void UpgradeButtonBars();
/// The next call looks into the store again: another one may stand in its place.
void ForgetButtonBarUpgrade();
/// Appends the names of the bars that the key holds, and "Default" at the end where it was not among them. False when
/// the key is there and cannot be read.
bool EnumerateButtonBars(const char16_t* source, VStringArray& names);

}  // namespace connectdialog
