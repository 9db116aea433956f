// The time of day.
//
// A time is the count of 100-nanosecond steps since the start of 1601, UTC. The clock is replaceable, so that a test
// can turn it by hand.
#pragma once

#include <cstdint>

namespace connectdialog::platform {

inline constexpr std::uint64_t kFileTimePerSecond = 10'000'000;
/// The start of 1970, UTC, where the count of Unix begins.
inline constexpr std::uint64_t kUnixEpoch = 116'444'736'000'000'000;

/// The time now, by the clock that is set.
std::uint64_t GetFileTimeNow();

using Clock = std::uint64_t (*)();
/// Replaces the system's clock; null puts it back. May be called from any thread.
void SetClock(Clock clock);

}  // namespace connectdialog::platform
