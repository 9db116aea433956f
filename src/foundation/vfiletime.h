// Times as they are stored, compared and shown.
//
// A file time is the count of 100-nanosecond steps since the start of 1601, UTC (platform/clock.h tells the time now).
// Counts from 2^63 on are no times.
#pragma once

#include <cstdint>

#include "foundation/vunicodestring.h"

namespace connectdialog {

using VFileTime = std::uint64_t;

/// A time as the calendar and the clock on the wall tell it.
struct VSystemTime {
    int year = 0;       ///< from 1601
    int month = 0;      ///< 1 to 12
    int dayOfWeek = 0;  ///< 0 is Sunday
    int day = 0;        ///< 1 to 31
    int hour = 0;       ///< 0 to 23
    int minute = 0;
    int second = 0;
    int milliseconds = 0;

    friend bool operator==(const VSystemTime&, const VSystemTime&) = default;
};

/// -1, 0 or 1.
int VCompareFileTimes(VFileTime a, VFileTime b);
/// `a` - `b` in whole seconds, rounded towards 0.
std::int64_t VSubtractFileTimes(VFileTime a, VFileTime b);

/// The calendar is the Gregorian one. On failure: false with the last error 87, and `time` stays.
bool VFileTimeToUtc(VFileTime fileTime, VSystemTime& time);
/// The same in local time, by the rules of the time zone that hold at that moment. Fails too where local time lies
/// before 1601.
bool VFileTimeToLocal(VFileTime fileTime, VSystemTime& time);

/// Local time as "2024-02-29 23:59:58". On failure: the empty string.
VUnicodeString VFormatLocalTime(VFileTime fileTime);

}  // namespace connectdialog
