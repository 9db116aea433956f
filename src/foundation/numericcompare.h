// The order of names with numbers in them.
#pragma once

#include <cstdint>
#include <string_view>

namespace connectdialog {

/// Orders `a` and `b`: negative, 0 or positive.
///
/// Texts that are the same without regard to case are equal. Otherwise the comparison walks over both texts at the same
/// pace and, at each offset, reads a decimal number from there in both. Two different numbers decide, by their
/// difference; so a name ending in 2 comes before the same name ending in 10. Then the first characters of the two
/// texts decide, without regard to case: only they, at whatever offset the walk is. At the end the shorter text comes
/// first. So abc and abd are equal, by design: a caller that needs an order of all names adds its own tie-break.
///
/// A number is read as strtoul reads it (white space and a plus sign may stand before it) and is below 2^32; a greater
/// one and one with a minus sign are no numbers. Time grows with the length of the shorter text.
int CompareNumericText(std::u16string_view a, std::u16string_view b);

}  // namespace connectdialog
