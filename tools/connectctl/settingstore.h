// Finding one setting of a session, and storing a session with a changed one.
#pragma once

#include <string_view>

#include "tools/connectctl/command.h"

namespace connectdialog {
class ISessionConfig;
class VProfileData;
}  // namespace connectdialog

namespace connectdialog::connectctl {

/// The setting of that name among those that the session would save, case ignored; null when there is none. Owned by
/// the session.
VProfileData* FindSetting(ISessionConfig& session, std::u16string_view name);

/// Saves the session's changes in one unit of work and reads them back in it: a session corrects, while it is loaded,
/// values that its settings do not take, and then the store keeps what it had.
/// Fails when the store refuses, and when `setting` does not come back as it was set.
Failure StoreSetting(ISessionConfig& session, VProfileData& setting);

}  // namespace connectdialog::connectctl
