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
/// On failure: null, and `report` tells why in words for the user (unknown scheme, a folder, unreadable, not a store,
/// a newer version, damaged, locked).
std::unique_ptr<VProfileStoreFactory> OpenProfileStoreFactory(const VUnicodeString& url, VReportMessageParams& report);

/// The URL of the user's own store: BRENNMARK_STORE when set, else `sqlite:` in the user's data folder.
VUnicodeString GetDefaultStoreUrl();

}  // namespace stores
}  // namespace connectdialog
