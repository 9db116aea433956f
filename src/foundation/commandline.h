// Command lines as text, and the one rule by which they become argument vectors.
#pragma once

#include <string_view>

#include "foundation/vstringarray.h"

namespace connectdialog {

/// Takes a command line apart into its words, which replace `words`. Blanks separate words. A word that begins with a
/// double quote is what stands between it and the next double quote with a blank or the end behind it: blanks and
/// single double quotes within are text. Nothing else has a meaning; no shell ever sees the line.
/// On failure: false when a quote is left open; its word is the rest of the line.
bool SplitCommandLine(std::u16string_view line, VStringArray& words);

}  // namespace connectdialog
