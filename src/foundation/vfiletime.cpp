#include "foundation/vfiletime.h"

#include <chrono>

#include "platform/clock.h"
#include "platform/lasterror.h"
#include "platform/localtime.h"

namespace connectdialog {

namespace {

constexpr VFileTime kEndOfTimes = VFileTime{1} << 63;
constexpr std::int64_t kSecondsBefore1970 = platform::kUnixEpoch / platform::kFileTimePerSecond;
constexpr VFileTime kFileTimePerMillisecond = platform::kFileTimePerSecond / 1000;

}  // namespace

int VCompareFileTimes(VFileTime a, VFileTime b) {
    return a < b ? -1 : a > b ? 1 : 0;
}

std::int64_t VSubtractFileTimes(VFileTime a, VFileTime b) {
    const auto seconds = [](VFileTime span) { return static_cast<std::int64_t>(span / platform::kFileTimePerSecond); };
    return a >= b ? seconds(a - b) : -seconds(b - a);
}

bool VFileTimeToUtc(VFileTime fileTime, VSystemTime& time) {
    using namespace std::chrono;
    if (fileTime >= kEndOfTimes) return platform::FailWith(platform::kInvalidParameter);
    const milliseconds sinceStart(fileTime / kFileTimePerMillisecond);
    const sys_time<milliseconds> moment(sinceStart - seconds(kSecondsBefore1970));
    const auto midnight = floor<days>(moment);
    const year_month_day date(midnight);
    const hh_mm_ss clock(moment - midnight);
    time.year = static_cast<int>(date.year());
    time.month = static_cast<int>(static_cast<unsigned>(date.month()));
    time.dayOfWeek = static_cast<int>(weekday(midnight).c_encoding());
    time.day = static_cast<int>(static_cast<unsigned>(date.day()));
    time.hour = static_cast<int>(clock.hours().count());
    time.minute = static_cast<int>(clock.minutes().count());
    time.second = static_cast<int>(clock.seconds().count());
    time.milliseconds = static_cast<int>(clock.subseconds().count());
    return true;
}

bool VFileTimeToLocal(VFileTime fileTime, VSystemTime& time) {
    if (fileTime >= kEndOfTimes) return platform::FailWith(platform::kInvalidParameter);
    const auto unixSeconds = static_cast<std::int64_t>(fileTime / platform::kFileTimePerSecond) - kSecondsBefore1970;
    std::int64_t offset = 0;
    if (!platform::GetLocalOffset(unixSeconds, offset)) return false;
    // A time before the start wraps to a count that is none.
    return VFileTimeToUtc(fileTime + static_cast<VFileTime>(offset) * platform::kFileTimePerSecond, time);
}

VUnicodeString VFormatLocalTime(VFileTime fileTime) {
    VSystemTime time;
    VUnicodeString text;
    if (!VFileTimeToLocal(fileTime, time)) return text;
    text.Format(u"%1!04d!-%2!02d!-%3!02d! %4!02d!:%5!02d!:%6!02d!", time.year, time.month, time.day, time.hour,
                time.minute, time.second);
    return text;
}

}  // namespace connectdialog
