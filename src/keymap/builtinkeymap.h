// The bindings that every loaded keymap has behind its own.
#pragma once

#include <memory>

#include "keymap/keymap.h"

namespace connectdialog {

std::unique_ptr<Keymap> MakeBuiltInKeymap();

}  // namespace connectdialog
