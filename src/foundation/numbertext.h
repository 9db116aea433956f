// Numbers as text.
#pragma once

#include <charconv>
#include <string_view>

namespace connectdialog {

/// Reads the whole text as an integer in that base, without blanks, a prefix or a "+", and with a "-" only where the
/// type has a sign. On failure (it is none, or the type has no room for it): false, and `number` stays.
template <class T>
bool ReadNumber(std::string_view text, T& number, int base = 10) {
    T read = 0;
    const char* const textEnd = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), textEnd, read, base);
    if (error != std::errc() || end != textEnd) return false;
    number = read;
    return true;
}

}  // namespace connectdialog
