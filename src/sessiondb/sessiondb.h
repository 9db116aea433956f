// The session database's part of the library's start-up.
#pragma once

namespace connectdialog {

/// Makes the session database known to the settings of sessions below it, which ask it for firewalls and for the
/// upgrade of old button bars. May be called again.
void InstallSessionDatabase();

}  // namespace connectdialog
