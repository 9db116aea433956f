// Points in time as parts of file names, always UTC.
#pragma once

#include <cstdint>
#include <string>

namespace connectdialog::stores {

constexpr std::int64_t kSecondsPerDay = 86400;

/// "2026-11-21" for a number of days since 1970.
std::string FormatUtcDate(std::int64_t day);
/// "20261121T134501Z" for a number of seconds since 1970.
std::string FormatUtcTime(std::int64_t seconds);

}  // namespace connectdialog::stores
