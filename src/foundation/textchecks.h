// What a text from outside holds that no name should, and no terminal should see; and how much of it is shown.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "platform/utf16.h"

namespace connectdialog {

/// The control characters of ASCII and of Latin-1, the two line separators of Unicode, and the marks that turn the
/// direction of writing: none of them shows, and each changes what the text around it looks like.
constexpr bool IsControl(char16_t character) {
    return character < 0x20 || (character >= 0x7F && character <= 0x9F) || character == 0x061C || character == 0x200E ||
           character == 0x200F || (character >= 0x2028 && character <= 0x202E) ||
           (character >= 0x2066 && character <= 0x2069);
}
constexpr bool HasControl(std::u16string_view text) {
    // The address of the function would be called for each character.
    return std::any_of(text.begin(), text.end(), [](char16_t character) { return IsControl(character); });
}

/// Whether the surrogate at `i` stands without its other half; false for any other character.
constexpr bool IsHalfCharacter(std::u16string_view text, std::size_t i) {
    if (platform::IsHighSurrogate(text[i])) return i + 1 == text.size() || !platform::IsLowSurrogate(text[i + 1]);
    return platform::IsLowSurrogate(text[i]) && (i == 0 || !platform::IsHighSurrogate(text[i - 1]));
}
constexpr bool HasHalfCharacter(std::u16string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i)
        if (IsHalfCharacter(text, i)) return true;
    return false;
}

/// The first `most` code units, or one fewer where that would cut a character in half.
constexpr std::u16string_view StartOf(std::u16string_view text, std::size_t most) {
    const bool cutsCharacter = most > 0 && most < text.size() && platform::IsHighSurrogate(text[most - 1]) &&
                               platform::IsLowSurrogate(text[most]);
    return text.substr(0, cutsCharacter ? most - 1 : most);
}
/// The text in at most so many code units for show: of a longer one the start, and the ellipsis behind it.
/// Requires: there is room for the ellipsis.
inline std::u16string Shorten(std::u16string_view text, std::size_t most, std::u16string_view ellipsis = u"…") {
    if (text.size() <= most) return std::u16string(text);
    return std::u16string(StartOf(text, most - ellipsis.size())).append(ellipsis);
}

constexpr bool IsAsciiLetterOrDigit(char16_t character) {
    return (character >= u'0' && character <= u'9') || (character >= u'A' && character <= u'Z') ||
           (character >= u'a' && character <= u'z');
}

}  // namespace connectdialog
