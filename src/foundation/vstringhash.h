// The hash that VMap distributes texts by.
#pragma once

#include <cstdint>
#include <string_view>

namespace connectdialog {

/// The sum of the code units, modulo 2^32. Case counts, the order of the characters does not.
inline std::uint32_t VStringHash(std::u16string_view text) {
    std::uint32_t hash = 0;
    for (const char16_t character : text) hash += character;
    return hash;
}

}  // namespace connectdialog
