// Folders that hold a user's own data.
#pragma once

#include <string_view>

namespace connectdialog::platform {

/// Makes the folder and those above it that are missing, for this user alone (mode 0700 from the first instant). A
/// folder that is there already is left as it is. On failure: false with the last error: 267 when a name on the way is
/// that of something else, 5, 19, 112...
bool CreateUserFolder(std::u16string_view path);

/// Whether a file can be made in the folder: one is made and deleted again, which also tells of a disk that is full or
/// read-only. On failure: false with the last error.
bool CanMakeFilesIn(std::u16string_view folder);

/// Whether the path names a folder (not a link to one) that belongs to this user and that no other may look into: what
/// a folder of sockets and locks must be before it is trusted. On failure: false with the last error; 5 when it belongs
/// to or is open to others.
bool IsPrivateFolder(std::u16string_view path);

}  // namespace connectdialog::platform
