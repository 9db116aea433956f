// Picks a provider of the profile store by the scheme of a URL.
#pragma once

#include <memory>

#include "foundation/vunicodestring.h"
#include "profile/iprofilestore.h"

namespace connectdialog {

class VReportMessageParams;

namespace stores {

/// A factory for the store that `url` names: `memory:` (a new, empty store that lives as long as the factory) or
/// `sqlite:PATH` (a file, created at the first write; PATH is a native path in the text of the URL as it stands).
///
/// Opens the store far enough to tell whether it can be used.
///
/// A store that was damaged as a whole is set aside under another name and replaced by its newest sound backup, or by
/// an empty store. That is a success with a notice: the factory is given, and `report` has the code 1015 and three
/// inserts: the store, the name that the damaged file has now, and the backup ("" when there was none).
///
/// On failure: null, and `report` tells why: 87 for an unknown scheme or an empty path, 5 for a folder, a device or
/// what may not be read, 13 for a file that is no store, 50 for a store of a newer version, 1015 for a damaged one that
/// cannot be set aside, 32 for one that another process keeps locked. The first insert is the store, the last the cause
/// in words for the user.
std::unique_ptr<VProfileStoreFactory> OpenProfileStoreFactory(const VUnicodeString& url, VReportMessageParams& report);

/// The URL by which other processes find the same store, whichever folder they run in.
VUnicodeString GetAbsoluteStoreUrl(const VUnicodeString& url);

}  // namespace stores
}  // namespace connectdialog
