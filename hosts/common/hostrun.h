// What one run of a host is about.
#pragma once

#include <string>

#include "hosts/common/hostkind.h"

namespace connectdialog::hosts {

struct HostRun {
    const HostKind& kind;
    /// The store's, absolute.
    std::string storeUrl;
    /// Whether it is the user's own store. Any other may be somebody else's, who has no say in which programs run here.
    bool isOwnStore = true;
};

}  // namespace connectdialog::hosts
