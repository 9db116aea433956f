// Taking texts apart and putting them together: tokens, quotes, escapes, numbers.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>

#include "foundation/vstringarray.h"
#include "foundation/vstringhash.h"
#include "foundation/vunicodestring.h"

namespace connectdialog {

/// Splits `text` into the tokens between delimiters; `tokens` is replaced. An empty text has no tokens.
///
/// A delimiter is a text of one or more characters; where several match, the first in the list counts. A quote pair is
/// a text of two characters, the opening and the closing one: between them delimiters are text. With `skipEmpty`, empty
/// tokens are left out, but a quoted empty token is kept. With `stripQuotes`, the quotes themselves are left out.
/// On failure: false when a quote was left open; the rest of the text is the last token then.
bool VTokenize(std::u16string_view text, VStringArray& tokens, std::initializer_list<std::u16string_view> delimiters,
               std::initializer_list<std::u16string_view> quotePairs, bool skipEmpty, bool stripQuotes);

/// Splits on one character; empty tokens are kept and there are no quotes.
bool VSplitOnChar(std::u16string_view text, VStringArray& tokens, char16_t delimiter);

/// Splits on commas outside double quotes; empty tokens and the quotes are kept.
bool VSplitCommaList(std::u16string_view text, VStringArray& tokens);

/// The pieces one after the other, in one buffer. A string grows by exact fit: appended one by one, each would copy all
/// that is there.
VUnicodeString VConcatenate(std::span<const std::u16string_view> pieces, Str::SensitiveState state);

/// Joins the elements that are not empty, each passed through VQuoteIfNeeded, with `delimiter` between them. A quote
/// pair of one character stands for opening and closing alike.
VUnicodeString VJoin(const VStringArray& elements, std::u16string_view delimiter, std::u16string_view quotePair,
                     std::u16string_view forcing);

/// Wraps `text` in the quote pair when it has a character of `forcing` in it; always when `forcing` is empty, never
/// when the pair is.
VUnicodeString VQuoteIfNeeded(const VUnicodeString& text, std::u16string_view quotePair, std::u16string_view forcing);

/// Drops each escape character and keeps the character after it as it stands, also when that is an escape character.
/// `escape` is a text of one character; an empty one changes nothing.
VUnicodeString VRemoveEscapes(const VUnicodeString& text, std::u16string_view escape);

/// Reads a number from 0 to 65535, as strtoul reads it in base 10: white space and a plus sign may stand before it, and
/// white space behind it. `text` is zero-terminated or null.
/// On failure: false, and `value` stays as it was.
bool VParseUnsigned16(const char* text, std::uint16_t& value);

}  // namespace connectdialog
