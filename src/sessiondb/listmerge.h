// The user's order of a folder, as text, against the names that are really there.
#pragma once

#include <string_view>

#include "foundation/vstringarray.h"

namespace connectdialog {

/// A list is a run of names, each followed by ":"; text behind the last ":" is no name. There is no escaping.
///
/// Fills `ordered` with the listed names that are in `present`, each once, and then with the rest of `present` in
/// ordinal order. `present` may be in any order but holds no name twice. Linear in both but for sorting the rest.
/// Gives true when list and names differed: a stale or repeated name, or a name that was not listed.
bool MergeList(std::u16string_view list, const VStringArray& present, VStringArray& ordered);

/// Whether a list can hold the name as itself: a name with ":" in it reads as several.
bool CanBeListed(std::u16string_view name);

/// The list of the names: each with ":" behind it.
VUnicodeString MakeList(const VStringArray& names);

}  // namespace connectdialog
