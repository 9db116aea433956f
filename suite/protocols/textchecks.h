// What a text from outside holds that no name should.
#pragma once

#include <algorithm>
#include <string_view>

namespace connectdialog {

/// The control characters of ASCII and of Latin-1, the two line separators of Unicode, and the marks that turn the
/// direction of writing: none of them shows, and each changes what the text around it looks like.
constexpr bool IsControl(char16_t character) {
    return character < 0x20 || (character >= 0x7F && character <= 0x9F) || character == 0x2028 || character == 0x2029 ||
           (character >= 0x202A && character <= 0x202E) || (character >= 0x2066 && character <= 0x2069);
}
constexpr bool HasControl(std::u16string_view text) {
    return std::any_of(text.begin(), text.end(), IsControl);
}

/// Whether a surrogate stands without its other half.
constexpr bool HasHalfCharacter(std::u16string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if ((text[i] & 0xF800) != 0xD800) continue;
        const bool isPair = text[i] < 0xDC00 && i + 1 < text.size() && (text[i + 1] & 0xFC00) == 0xDC00;
        if (!isPair) return true;
        ++i;
    }
    return false;
}

constexpr bool IsAsciiLetterOrDigit(char16_t character) {
    return (character >= u'0' && character <= u'9') || (character >= u'A' && character <= u'Z') ||
           (character >= u'a' && character <= u'z');
}

}  // namespace connectdialog
