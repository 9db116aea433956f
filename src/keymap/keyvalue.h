// The parts of a key value: the 32 bits by which a keymap names a key with its modifiers.
//
// The low bits are the key's code: a virtual key of the platform, a number from 0x01000000 upward for a key that has
// none, or kKeyCharacter with the Latin-1 code of the character that the key gives. The modifiers stand on top.
#pragma once

#include <cstdint>

namespace connectdialog {

inline constexpr std::uint32_t kKeyExtended = 0x02000000;  ///< E
inline constexpr std::uint32_t kKeyControl = 0x04000000;   ///< C
inline constexpr std::uint32_t kKeyShift = 0x08000000;     ///< S
inline constexpr std::uint32_t kKeyAlt = 0x10000000;       ///< A
inline constexpr std::uint32_t kKeyCharacter = 0x80000000;

/// A letter of keymap files and its bit.
struct KeyModifier {
    char16_t letter;
    std::uint32_t bit;
};
/// In the order in which they are written.
inline constexpr KeyModifier kKeyModifiers[] = {
    {u'A', kKeyAlt}, {u'C', kKeyControl}, {u'S', kKeyShift}, {u'E', kKeyExtended}};

}  // namespace connectdialog
