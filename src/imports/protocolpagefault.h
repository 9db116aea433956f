// What is told of a protocol whose plug-in cannot show its page.
#pragma once

#include <cstdint>

#include "foundation/vunicodestring.h"

namespace connectdialog {

class VWindow;

/// The code of a report of it; the insert is the protocol's name.
inline constexpr std::uint32_t kNoProtocolPage = 0xE1090004;

/// Tells it in a box. `parent` may be null.
void TellNoProtocolPage(VWindow* parent, const VUnicodeString& protocolName);

}  // namespace connectdialog
