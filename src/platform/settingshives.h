// The files that hold the settings of the machine and of the user beside the profile store.
//
// A hive is one text file in the form of a registry export. The machine's belongs to the administrator, who writes
// policies with an editor; the user's is written by the library. What is in a file is read and written by
// foundation/vsettingshive.h; here stands only where the files are.
#pragma once

#include <string>

namespace connectdialog::platform {

enum class HiveScope { kMachine, kUser };

/// The file of a hive, names joined by `\`. It need not exist. Empty when the system tells no folder for it.
std::u16string GetHivePath(HiveScope scope);

}  // namespace connectdialog::platform
