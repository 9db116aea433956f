// Where things lie for this user.
//
// On POSIX the folders are those of the XDG Base Directory standard and, for what the user sees, of the user's
// user-dirs.dirs. Variables that hold no absolute path are passed over, as that standard asks. A path that is given
// need not exist: who writes there makes it first (platform/userfiles.h).
#pragma once

#include <string>

namespace connectdialog::platform {

enum class KnownFolder {
    kHome,                  ///< the user's home: the profile folder
    kData,                  ///< the library's data: the default store
    kConfiguration,         ///< the library's configuration: keymaps, menus, the user's settings hive
    kState,                 ///< what may be lost: traces
    kRuntime,               ///< sockets and locks; trusted only when IsPrivateFolder
    kMachineConfiguration,  ///< settings of the machine, written by its administrator
    kDocuments,
    kDownloads,
    kDesktop
};

/// The folder's path, names joined by `\`, without one at the end.
/// On failure: the empty string with the last error 3, when the user has no home or the session no folder for run time.
std::u16string GetKnownFolder(KnownFolder folder);

}  // namespace connectdialog::platform
