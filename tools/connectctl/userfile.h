// Files that a user names.
#pragma once

#include <cstdint>

#include "tools/connectctl/command.h"

namespace connectdialog {
class VUnicodeString;
}

namespace connectdialog::connectctl {

/// The file's name and what the code says.
Failure FileFailure(const VUnicodeString& name, std::uint32_t code);
/// Why the file cannot be opened for reading, or success.
std::uint32_t ProbeFile(const VUnicodeString& name);

}  // namespace connectdialog::connectctl
