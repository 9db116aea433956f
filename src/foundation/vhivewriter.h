// Writing a settings hive as text: the other direction of foundation/vhivereader.h.
#pragma once

#include <string>

#include "foundation/vhivetree.h"

namespace connectdialog {

/// The tree as a file, in the encoding that it was read in. Keys and values stand in the order of their names, with
/// their comments above them; a key that only leads to others has no line of its own. Reading it again gives the same
/// tree.
std::string WriteHive(const VHiveTree& tree);

}  // namespace connectdialog
