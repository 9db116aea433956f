// The environment variables of this process.
//
// They are read in the narrow encoding and given as UTF-16. The environment may be read from any thread as long as none
// changes it; the library itself never does.
#pragma once

#include <string>
#include <string_view>

namespace connectdialog::platform {

/// Gives the variable's value as it stands, backslashes and slashes alike; a set but empty variable is found.
/// On failure: false with the last error 203 when there is no such variable or the name is empty or holds a `=` or a
/// zero; `value` stays as it was.
bool GetEnvironmentText(std::u16string_view name, std::u16string& value);

}  // namespace connectdialog::platform
