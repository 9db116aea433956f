// Names of keys and values as callers give them: levels, limits and folding.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace connectdialog::stores {

/// Levels below the root. It bounds every recursion over a store.
constexpr std::size_t kMaxKeyDepth = 128;
/// Code units of one level of a key name, and of a value name.
constexpr std::size_t kMaxNameLength = 16383;

/// Whether a new value may have the name: any text that is not too long.
bool IsValueName(const char16_t* name);

/// Cuts the first level off `rest`, with the backslash behind it, and gives it.
std::u16string_view TakeLevel(std::u16string_view& rest);

/// The name of a key some levels below another.
///
/// Apart from the backslash every character may stand in a level: quotes, control characters and lone surrogates are
/// text like any other. Folding leaves the backslash alone, so both texts have their levels at the same places.
struct KeyName {
    std::u16string spelled;
    std::u16string folded;
    std::size_t levels = 0;

    /// Takes a name of at least one level over, for a key below one that lies `depth` levels below the root.
    /// On failure: false, and the name stays as it was, when a level is empty or too long or lies too deep.
    bool Parse(std::u16string_view name, std::size_t depth);
};

}  // namespace connectdialog::stores
