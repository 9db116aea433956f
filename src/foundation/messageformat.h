// Message templates: text with positional inserts.
//
//   template   = { character | escape }
//   escape     = "%" ( insert | "0" | "n" | "r" | other )
//   insert     = number [ "!" conversion "!" ]          number: 1..99, one or two digits
//   conversion = { "-" | "+" | " " | "#" | "0" } [ width ] [ "." [ precision ] ] [ size ] type
//   size       = "h" | "hh" | "l" | "ll" | "w" | "z" | "j" | "t" | "I" | "I32" | "I64"
//   type       = "d" | "i" | "u" | "x" | "X" | "o"      an integer
//              | "c" | "C"                              one character, given as an integer
//              | "s" | "S"                              a text, wide or narrow
//              | "e" | "E" | "f" | "F" | "g" | "G"      a floating-point number
//
// `%n` is a line break (CR LF), `%r` a carriage return; `%0` ends the message; `%` before any other character stands
// for that character, so `%%`, `% `, `%.` and `%!` give a percent sign, a blank, a period and an exclamation mark. An
// insert without a conversion is a text. Width and precision mean what they mean in printf (for texts they count UTF-16
// units); they are at most kMaxMessageField, and a `*` is not known. The size is read and ignored: an argument knows
// its own. Numbers print the same in every locale.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "foundation/formatargument.h"

namespace connectdialog {

/// How a template is read; the values may be joined.
enum MessageFlags : std::uint32_t {
    kMessagePlain = 0,
    /// Line breaks that stand in the template are dropped; those of `%n`, `%r` and the arguments stay.
    kMessageOneLine = 0xFF,
    /// Inserts, and escapes that stand for a single character, are left as they stand in the template; `%n`, `%r` and
    /// `%0` keep their meaning. Arguments are not looked at.
    kMessageIgnoreInserts = 0x200
};

inline constexpr std::uint32_t kMaxMessageField = 4096;

/// Writes the message to `out` and gives its length in characters; with a null `out` it only counts them. No
/// terminator is written. Requires: `out` has room for as many as the count says.
/// On failure: throws InvalidParameter when an insert has no argument or one of another kind than its conversion, when
/// a conversion is malformed or when the template ends with a lone percent sign.
std::size_t ExpandMessage(std::u16string_view messageTemplate, const FormatArgument* arguments, std::size_t count,
                          std::uint32_t flags, char16_t* out);

/// Sets `text`, which keeps its sensitive state, to the message. A template whose inserts do not fit the arguments
/// gives its own text, as with kMessageIgnoreInserts. Template and arguments may lie in `text`. On failure: false, and
/// `text` stays as it was, when the template ends with a lone percent sign.
bool ExpandMessageInto(VUnicodeString& text, std::u16string_view messageTemplate, const FormatArgument* arguments,
                       std::size_t count, std::uint32_t flags);

}  // namespace connectdialog
