// The text form of access rules.
#pragma once

#include "foundation/vsecuritydescriptor.h"
#include "foundation/vunicodestring.h"

namespace connectdialog {

/// Makes the list that the rules tell; see VSecurityDescriptor::LoadRules for the form of rules and for `rights` and
/// `resolver`, which may be null. Gives the rules that cannot be read or added, each in double quotes, with ", "
/// between them; the empty string when there are none.
VUnicodeString MakeList(const VStringArray& rules, const AccessRight* rights, IAccountResolver* resolver, VAcl& list);

}  // namespace connectdialog
