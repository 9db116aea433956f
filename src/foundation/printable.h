// Text on its way to the user: UTF-8, and never able to drive the terminal.
//
// Names and values come from anywhere. A character that a terminal would act upon, or that would change how the rest of
// the line looks, is written as `<U+001B>`: the control characters (line breaks and tabs too), the line and paragraph
// separators, the marks that turn the direction of writing, and lone surrogates. The form holds no `\`, so a path stays
// a path.
#pragma once

#include <string>
#include <string_view>

namespace connectdialog {

inline constexpr std::u16string_view kPrintableStart = u"<U+";
inline constexpr std::u16string_view kPrintableEnd = u">";

/// The text as UTF-8 with each unsafe character as `before`, four hexadecimal digits, `after`.
std::string Printable(std::u16string_view text, std::u16string_view before = kPrintableStart,
                      std::u16string_view after = kPrintableEnd);
/// The first `most` code units of the text like that, and `more` behind them where there are more. No character is cut
/// in half.
std::string PrintableStart(std::u16string_view text, std::size_t most, std::string_view more);
/// The text that Printable was given: each `<U+XXXX>` (four hexadecimal digits) becomes its character again.
std::u16string FromPrintable(std::u16string_view text);

}  // namespace connectdialog
