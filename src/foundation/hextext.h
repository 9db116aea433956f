// Bytes as hexadecimal digits, two a byte.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "foundation/vunicodestring.h"

namespace connectdialog {

/// What a hexadecimal digit of either case stands for; kNoHexDigit for any other character.
inline constexpr unsigned kNoHexDigit = 16;
constexpr unsigned HexDigitValue(char16_t character) {
    if (character >= u'0' && character <= u'9') return character - u'0';
    if (character >= u'a' && character <= u'f') return character - u'a' + 10u;
    if (character >= u'A' && character <= u'F') return character - u'A' + 10u;
    return kNoHexDigit;
}

enum class HexCase : std::uint8_t { kLower, kUpper };
/// The digit of the lowest four bits.
template <class Char = char16_t>
constexpr Char HexDigit(unsigned value, HexCase digits) {
    return static_cast<Char>((digits == HexCase::kLower ? "0123456789abcdef" : "0123456789ABCDEF")[value & 0xF]);
}

/// `prefix` followed by the digits of `bytes`, made in one buffer of the given state.
VUnicodeString EncodeHex(std::u16string_view prefix, std::span<const std::uint8_t> bytes, HexCase digits,
                         Str::SensitiveState state);

/// Decodes digits of either case in pairs, up to the first pair that is none; an odd digit at the end is left over.
/// Gives the number of bytes. Requires: `bytes` has room for half as many bytes as there are characters.
std::size_t DecodeHex(std::u16string_view digits, std::uint8_t* bytes);

}  // namespace connectdialog
