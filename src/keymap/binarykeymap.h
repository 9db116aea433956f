// The binary form in which keymaps were once stored; see profilekeymap.h.
#pragma once

#include <cstddef>
#include <cstdint>

#include "keymap/keymap.h"

namespace connectdialog {

enum class BinaryKeymapResult {
    kWhole,     ///< as many bindings as the count says, or all that there are
    kCutShort,  ///< the data ends within a binding
    kNoCount    ///< nothing was read
};

/// Adds the bindings of the data; those of unknown functions are left out.
BinaryKeymapResult ReadBinaryKeymap(const std::uint8_t* data, std::size_t size, Keymap& keymap);

}  // namespace connectdialog
