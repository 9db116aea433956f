// How a host speaks to who started it.
#pragma once

#include <string_view>

#include "hosts/common/hostkind.h"

namespace connectdialog::hosts {

/// One line on standard error that never drives the terminal, whatever names are in it.
void Tell(const HostKind& kind, std::u16string_view text);

}  // namespace connectdialog::hosts
