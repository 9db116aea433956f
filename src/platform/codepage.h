// The narrow encoding of this system and its conversion to UTF-16 and back.
//
// On POSIX it is UTF-8, whatever the process locale says. Malformed input never fails: each ill-formed piece becomes
// one U+FFFD (the longest beginning of a sequence that could still have become valid counts as one piece, as the
// Unicode Standard recommends in section 3.9), and so does a lone surrogate. Zero characters are text like any other.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace connectdialog::platform {

/// Writes `narrow` as UTF-16 to `wide` and gives the number of code units; with a null `wide` it only counts them.
/// Requires: `wide` has room for as many as the count says. No terminator is written.
std::size_t NarrowToWide(std::string_view narrow, char16_t* wide);
/// The same the other way, in bytes.
std::size_t WideToNarrow(std::u16string_view wide, char* narrow);

/// The bytes of `narrow` up to a character that is cut off at its end; all of them when none is. A text that comes in
/// pieces is converted up to there, and the rest together with the next piece: that gives what the whole text would.
std::size_t WholeNarrowLength(std::string_view narrow);

std::u16string ToWide(std::string_view narrow);
std::string ToNarrow(std::u16string_view wide);

}  // namespace connectdialog::platform
