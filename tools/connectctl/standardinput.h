// Texts that must not stand on a command line.
#pragma once

#include <cstddef>

#include "tools/connectctl/command.h"

namespace connectdialog {
class VNarrowString;
}

namespace connectdialog::connectctl {

/// Bytes of a text that a user hands in.
inline constexpr std::size_t kMostInputBytes = 1 << 20;

/// All of standard input, byte for byte and sensitive. Fails beyond `most` bytes and for text with a zero in it.
Failure ReadStandardInput(VNarrowString& text, std::size_t most = kMostInputBytes);
/// Drops the line breaks that a file or an echo ends with.
void DropLineEnd(VNarrowString& text);

}  // namespace connectdialog::connectctl
