// Maps from the names in a menu and toolbar description.
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>
#include <unordered_map>

#include "foundation/vunicodestring.h"

namespace connectdialog {

struct MenuNameHash {
    using is_transparent = void;  // a name is looked up without a string of its own
    std::size_t operator()(std::u16string_view name) const { return std::hash<std::u16string_view>()(name); }
};

/// Names are compared whole and with regard to case. It grows with what it holds: a description may define thousands of
/// names, and looking one up must not take longer for it.
template <class T>
using MenuNameMap = std::unordered_map<VUnicodeString, T, MenuNameHash, std::equal_to<>>;

}  // namespace connectdialog
