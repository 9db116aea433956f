// The two halves of a character beyond the basic plane.
#pragma once

namespace connectdialog::platform {

constexpr bool IsHighSurrogate(char32_t unit) {
    return (unit & 0xFFFFFC00) == 0xD800;
}
constexpr bool IsLowSurrogate(char32_t unit) {
    return (unit & 0xFFFFFC00) == 0xDC00;
}

}  // namespace connectdialog::platform
