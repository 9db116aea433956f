// Local time, by the zone data of the system.
#pragma once

#include <cstdint>

namespace connectdialog::platform {

/// How far local time is ahead of UTC at a moment, in seconds: with the rules that hold, or held, at that moment. The
/// zone is the user's: that of the variable TZ, else the system's. `unixSeconds` counts from 1970, UTC, and may be
/// negative. On failure: false with the last error, for a moment that the system cannot tell.
bool GetLocalOffset(std::int64_t unixSeconds, std::int64_t& offset);

}  // namespace connectdialog::platform
