// Case and white space of single characters, and comparison without regard to case.
//
// The mappings are the simple ones of Unicode (one code unit to one, see casefoldtable.h), the same in every process
// whatever its locale. Everything that must agree on names uses them: strings, stores, dialogs. Surrogates map to
// themselves.
#pragma once

#include <string>
#include <string_view>

namespace connectdialog {

namespace detail {
char16_t LowerBeyondAscii(char16_t character);
char16_t UpperBeyondAscii(char16_t character);
}  // namespace detail

inline char16_t ToLower(char16_t character) {
    if (character >= 0x80) return detail::LowerBeyondAscii(character);
    return character >= u'A' && character <= u'Z' ? static_cast<char16_t>(character + 32) : character;
}
inline char16_t ToUpper(char16_t character) {
    if (character >= 0x80) return detail::UpperBeyondAscii(character);
    return character >= u'a' && character <= u'z' ? static_cast<char16_t>(character - 32) : character;
}
/// What names are compared by: two names are one when their folded characters are the same.
inline char16_t FoldCase(char16_t character) {
    return ToLower(character);
}

/// FoldCase of each character.
std::u16string FoldText(std::u16string_view text);

/// Unicode's White_Space: tab to carriage return, blank, no-break space, the spaces of typography.
bool IsSpace(char16_t character);
inline bool IsDigit(char16_t character) {
    return character >= u'0' && character <= u'9';
}

/// -1, 0 or 1 by folded code units; a shorter text that is a prefix sorts first.
int CompareNoCase(std::u16string_view a, std::u16string_view b);
bool EqualsNoCase(std::u16string_view a, std::u16string_view b);

}  // namespace connectdialog
