// What a host with a screen asks between its start and its first dialog.
#pragma once

#include <memory>
#include <string>

#include "hosts/common/hostkind.h"
#include "profile/iprofilestore.h"
#include "suite/hostsetup/hostsetup.h"

namespace connectdialog {
class VIcon;
class VWindow;
}  // namespace connectdialog

namespace connectdialog::hosts {

/// On the first run of any program of the suite: asks where the user's own store shall live, and keeps the answer for
/// all of them. Asks nothing when that is known. `icon` may be null.
/// Requires: the application's name is set, and no store is open.
/// On failure: false when the user gave up: the host ends, and nothing was made. A choice that cannot be kept is told,
/// and false too.
bool AskForStoreFolder(const VIcon* icon);

/// The URL by which every process finds the store that `told` names, or the user's own when that is empty.
std::string FindStoreUrl(const std::string& told);

/// What a host over that store has for the library. `icon` may be null.
HostParts MakeHostParts(const std::string& storeUrl, VIcon* icon);

/// Opens the store and installs the suite over it; what fails is told, and asked whether to try again.
/// On failure: null, when the user gave up.
std::unique_ptr<VProfileStoreFactory> OpenStoreInWindow(const HostKind& kind, const std::string& storeUrl,
                                                        const HostParts& parts);

/// Reminds the user to look for a new version, when it is time, and tells who wants to how one gets it. `parent` may be
/// null. Requires: a store is open.
void RemindOfUpdates(VWindow* parent);

}  // namespace connectdialog::hosts
