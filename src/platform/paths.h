// File paths at the border to the system: the only place where `\` and `/` meet.
//
// Inside the library names are joined by `\`, on every platform. A path becomes native where a platform service opens,
// lists or loads something, and comes back by the same way. A file whose own name holds a backslash, or bytes that are
// no text in the narrow encoding, cannot be named by the library.
#pragma once

#include <string>
#include <string_view>

namespace connectdialog::platform {

/// The path as the system takes it. A path with a zero in it gives the empty string, which the system finds nowhere: it
/// would name another file otherwise.
std::string ToNativePath(std::u16string_view path);

/// The path as the library writes it.
std::u16string FromNativePath(std::string_view nativePath);

}  // namespace connectdialog::platform
