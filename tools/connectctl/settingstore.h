// Storing a session with a changed setting.
#pragma once

#include "tools/connectctl/command.h"

namespace connectdialog {
class ISessionConfig;
class VProfileData;
}  // namespace connectdialog

namespace connectdialog::connectctl {

/// Saves the session's changes in one unit of work and reads them back in it: a session corrects, while it is loaded,
/// values that its settings do not take, and then the store keeps what it had.
/// Fails when the store refuses, and when `setting` does not come back as it was set.
Failure StoreSetting(ISessionConfig& session, VProfileData& setting);

}  // namespace connectdialog::connectctl
