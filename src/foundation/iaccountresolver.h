// The seam to whoever knows accounts by name.
#pragma once

#include "foundation/vsid.h"
#include "foundation/vunicodestring.h"

namespace connectdialog {

class IAccountResolver {
  public:
    virtual ~IAccountResolver() = default;
    /// The identifier of an account; `name` is in the form that VNormalizeAccount gives.
    /// On failure: false with the last error 1332 when there is no such account, and `sid` stays.
    virtual bool Resolve(const VUnicodeString& name, VSid& sid) = 0;
};

}  // namespace connectdialog
