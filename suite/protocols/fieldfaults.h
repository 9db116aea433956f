// What a user is told of a text that a field of a dialog does not take.
#pragma once

#include "foundation/vunicodestring.h"
#include "suite/protocols/launchmessages.h"

namespace connectdialog {

/// A sentence with the field's label in it.
VUnicodeString DescribeFieldFault(LaunchFault fault, const VUnicodeString& label);

}  // namespace connectdialog
