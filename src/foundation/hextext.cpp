#include "foundation/hextext.h"

#include <algorithm>

namespace connectdialog {

VUnicodeString EncodeHex(std::u16string_view prefix, std::span<const std::uint8_t> bytes, HexCase digits,
                         Str::SensitiveState state) {
    VUnicodeString text;
    text.SetState(state);
    text.Resize(prefix.size() + 2 * bytes.size());
    char16_t* end = std::ranges::copy(prefix, &text.MutableAt(0)).out;
    for (const std::uint8_t byte : bytes) {
        *end++ = HexDigit(byte >> 4U, digits);
        *end++ = HexDigit(byte, digits);
    }
    return text;
}

std::size_t DecodeHex(std::u16string_view digits, std::uint8_t* bytes) {
    std::size_t count = 0;
    for (; digits.size() >= 2; digits.remove_prefix(2)) {
        const unsigned high = HexDigitValue(digits[0]);
        const unsigned low = HexDigitValue(digits[1]);
        if (high == kNoHexDigit || low == kNoHexDigit) break;
        bytes[count++] = static_cast<std::uint8_t>(high << 4 | low);
    }
    return count;
}

}  // namespace connectdialog
