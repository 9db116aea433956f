// The environment of the process, and the tokens of portable installations.
#pragma once

#include "foundation/vunicodestring.h"

namespace connectdialog {

/// On failure: false when the variable is not set, and `value` stays.
bool VGetEnvironment(const char16_t* name, VUnicodeString& value);

/// True when the program runs from a portable drive: the environment has U3_APP_DATA_PATH.
bool VIsPortableInstall();

}  // namespace connectdialog
