#include "hosts/common/tell.h"

#include <cstdio>

#include "foundation/printable.h"

namespace connectdialog::hosts {

void Tell(const HostKind& kind, std::u16string_view text) {
    std::fprintf(stderr, "%s: %s\n", kind.program, Printable(text).c_str());
}

}  // namespace connectdialog::hosts
