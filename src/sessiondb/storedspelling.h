// How the store spells a path: its names are the same in any case, and others compare what is told to them.
#pragma once

#include "foundation/vunicodestring.h"

namespace connectdialog {

/// The path with its names as the store has them. What is not there stays as it is, with all behind it.
VUnicodeString SpelledAsStored(const VUnicodeString& path);

}  // namespace connectdialog
