// The environment of the process, and the tokens of portable installations.
#pragma once

#include <cstddef>
#include <string_view>

#include "foundation/vunicodestring.h"

namespace connectdialog {

/// On failure: false when the variable is not set, and `value` stays.
bool VGetEnvironment(const char16_t* name, VUnicodeString& value);

/// The text with each `%NAME%` replaced by the variable's value, in one pass: values are not expanded again. The name
/// of a variable that is not set stays with its signs, and its closing sign may open the next name. The result ends
/// after `limit` characters.
VUnicodeString VExpandVariables(std::u16string_view text, std::size_t limit);

/// The same with the limit that templates of file names have: 511 characters, and cut at the first zero character.
VUnicodeString VExpandEnvironment(const VUnicodeString& text);

/// True when the program runs from a portable drive: the environment has U3_APP_DATA_PATH.
bool VIsPortableInstall();

/// The text with each `%u3data%` and `%u3doc%` (in exactly this case) replaced by the folders that a portable drive
/// tells in U3_APP_DATA_PATH and U3_DEVICE_DOCUMENT_PATH. A token whose variable is not set stays.
VUnicodeString VExpandPortableTokens(const VUnicodeString& text);

}  // namespace connectdialog
