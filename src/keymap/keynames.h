// The vocabulary of keymaps: keys and functions by name and by number.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "foundation/vunicodestring.h"
#include "keymap/keyvalue.h"

namespace connectdialog {

// Functions with a meaning of their own here; the hosts know what the others do.
inline constexpr std::uint32_t kKeyFunctionNone = 0;    ///< no action
inline constexpr std::uint32_t kKeyFunctionSend = 1;    ///< send the string
inline constexpr std::uint32_t kKeyFunctionRun = 2;     ///< run the program that the string names, with arguments
inline constexpr std::uint32_t kKeyFunctionLaunch = 3;  ///< launch the program that the string names

/// The answer for a name that is not known.
inline constexpr std::int32_t kUnknownKeyName = -1;

/// The code of a key by its name, in upper case, or by its number: a text that begins with a decimal digit is one,
/// hexadecimal behind "0x", octal behind "0"; white space may follow it. To be read as 32 unsigned bits.
/// On failure: kUnknownKeyName, for an unknown name, a number beyond 32 bits and other text behind a number.
std::int32_t GetKeyCode(std::u16string_view name);
/// The name of a key code without modifiers; one that has none gives its hexadecimal number, as GetKeyCode reads it.
/// Not every name leads back: see kExtendedKeys.
VUnicodeString GetKeyName(std::uint32_t code);

/// The number of a function by its exact name; the empty name is function 0. VT_HELP and VT_DO are other names of
/// VT_F15 and VT_F16. On failure: kUnknownKeyName.
std::int32_t GetKeyFunctionID(std::u16string_view name);
/// The name of a function, or the empty string.
VUnicodeString GetKeyFunctionName(std::uint32_t number);

/// Replaces `keys` with the key values that have the function when there is no keymap. False when there are none.
bool GetDefaultKeys(std::uint32_t number, std::vector<std::uint32_t>& keys);

}  // namespace connectdialog
