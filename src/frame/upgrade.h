// The one-time upgrade of stored data.
#pragma once

namespace connectdialog {

/// Opens every session and every firewall once, which brings their stored form up to date, and marks the global
/// settings so that it never runs again. Runs only in the state that old data leaves behind. What cannot be opened is
/// passed over.
void UpgradeStoredData();

}  // namespace connectdialog
