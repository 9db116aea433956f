// Texts that must not stand on a command line.
#pragma once

#include "tools/connectctl/command.h"

namespace connectdialog {
class VNarrowString;
}

namespace connectdialog::connectctl {

/// All of standard input, byte for byte and sensitive. Fails beyond a megabyte and for text with a zero in it.
Failure ReadStandardInput(VNarrowString& text);
/// Drops the line breaks that a file or an echo ends with.
void DropLineEnd(VNarrowString& text);

}  // namespace connectdialog::connectctl
