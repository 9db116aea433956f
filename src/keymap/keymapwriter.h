// Writes bindings as the lines of a keymap.
#pragma once

#include <cstdint>
#include <vector>

#include "foundation/vstringarray.h"
#include "keymap/keymap.h"

namespace connectdialog {

/// One line without its end, or the empty text for a binding of function 0. Nothing is escaped: a text with a line
/// break, or a key whose name GetKeyCode does not know, makes a line that does not read as the binding again.
VUnicodeString FormatBinding(std::uint32_t key, const Keymap::KeyMapEntry& entry);

/// The keys in the order in which they are written: by modifiers, then by code, both as unsigned numbers.
std::vector<std::uint32_t> GetSortedKeys(const Keymap::Entries& entries);

/// The lines of all bindings but those of function 0, sorted.
VStringArray FormatBindings(const Keymap::Entries& entries);

}  // namespace connectdialog
