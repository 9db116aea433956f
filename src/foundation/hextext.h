// Bytes as hexadecimal digits, two a byte.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "foundation/vunicodestring.h"

namespace connectdialog {

enum class HexCase : std::uint8_t { kLower, kUpper };

/// `prefix` followed by the digits of `bytes`, made in one buffer of the given state.
VUnicodeString EncodeHex(std::u16string_view prefix, std::span<const std::uint8_t> bytes, HexCase digits,
                         Str::SensitiveState state);

/// Decodes digits of either case in pairs, up to the first pair that is none; an odd digit at the end is left over.
/// Gives the number of bytes. Requires: `bytes` has room for half as many bytes as there are characters.
std::size_t DecodeHex(std::u16string_view digits, std::uint8_t* bytes);

}  // namespace connectdialog
