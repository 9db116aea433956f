// Maps from the names in a menu and toolbar description.
#pragma once

#include <algorithm>
#include <memory_resource>
#include <string_view>
#include <unordered_map>

namespace connectdialog {

/// Names are compared whole and with regard to case. It grows with what it holds: a description may define thousands of
/// names, and looking one up must not take longer for it. Names and entries lie in one memory, which gives nothing back
/// before it goes itself: a description is dropped as a whole.
template <class T>
using MenuNameMap = std::pmr::unordered_map<std::u16string_view, T>;

/// A copy of the name that lives as long as the memory.
inline std::u16string_view KeepMenuName(std::pmr::memory_resource& memory, std::u16string_view name) {
    if (name.empty()) return {};
    auto* const copy = static_cast<char16_t*>(memory.allocate(name.size() * sizeof(char16_t), alignof(char16_t)));
    std::ranges::copy(name, copy);
    return {copy, name.size()};
}

}  // namespace connectdialog
