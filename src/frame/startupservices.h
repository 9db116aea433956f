// What a host asks when it starts, before it opens anything.
#pragma once

#include <cstdint>

namespace connectdialog {

class VWindow;

/// Reminds the user to look for a new version, at most once in 30 days by the clock, whatever the answer; a clock that
/// stands before the last reminder reminds nobody. True when the user wants the check now: the host opens its update
/// page. `parent` may be null. A store that refuses to keep the date is not told.
bool CheckPeriodicUpdate(VWindow* parent);

/// The dialog that the user wants at the start; the settings for the two exclude each other.
enum class StartupDialog : std::uint8_t { kNone, kConnect, kQuickConnect };
StartupDialog GetStartupDialog();

}  // namespace connectdialog
