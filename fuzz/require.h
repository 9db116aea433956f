// What a fuzz target demands of what it tried.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace connectdialog::fuzz {

/// Ends the run as a failure that `what` names, unless the condition holds.
inline void Require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

}  // namespace connectdialog::fuzz
