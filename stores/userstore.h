// Where the user's own store lies, for all programs of the suite alike.
#pragma once

#include "foundation/vunicodestring.h"

namespace connectdialog {
class VReportMessageParams;
}

namespace connectdialog::stores {

/// The URL of the user's own store: BRENNMARK_STORE when set, else `sqlite:` with the file `sessions.db` in the folder
/// that the user chose, or in the usual one.
VUnicodeString GetDefaultStoreUrl();

/// To be asked before that store is opened: whether it can be where it was told to be. No empty store may take the
/// place of one on a disk that is not mounted. On failure: false, with a report whose insert is the path: 3 for a
/// chosen folder that is not there, 13 for a file `store-folder` that names no absolute path, another code for one that
/// cannot be read.
bool CheckDefaultStore(VReportMessageParams& report);

/// Whether it needs no asking where that is: it is told, a folder was chosen, even one that cannot be used, or there is
/// a file in the usual one.
bool IsDefaultStoreKnown();

/// The user's data folder, names joined by `\`; empty for a user without a home.
VUnicodeString GetUsualStoreFolder();

/// Chooses the folder for every later start, in the file `store-folder` of the configuration folder. `folder` is an
/// absolute path, names joined by `\`.
/// On failure: false with the last error, and what was chosen before still holds; 87 for another kind of path.
bool ChooseStoreFolder(const VUnicodeString& folder);

}  // namespace connectdialog::stores
