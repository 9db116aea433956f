// Files by which processes of one user meet, in a folder that nobody else can reach into.
#pragma once

#include <string>
#include <string_view>

namespace connectdialog::platform {

/// Opens the run-time folder itself; makes it when it is missing. Gives a descriptor that the caller closes.
/// On failure: -1 with the last error set: 5 or 267 for a folder that is not to be trusted.
int OpenRuntimeFolder();

/// Opens the file `name` of the run-time folder for reading and writing; makes both when they are missing, for this
/// user alone. Gives a descriptor that the caller closes.
/// On failure: -1 with the last error set, as platform/filelock.h tells.
int OpenRuntimeFile(std::u16string_view name);

/// Removes the name of a file. What is open stays so.
void RemoveRuntimeFile(std::u16string_view name);

/// Whether the descriptor is that of a regular file of this user that nobody else may open.
/// On failure: false with the last error 5.
bool IsPrivateFile(int descriptor);

}  // namespace connectdialog::platform
