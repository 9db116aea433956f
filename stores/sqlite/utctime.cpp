#include "stores/sqlite/utctime.h"

#include <array>
#include <chrono>
#include <cstdio>

namespace connectdialog::stores {

namespace {

std::string FormatDay(const char* format, std::int64_t day) {
    const std::chrono::year_month_day date{std::chrono::sys_days(std::chrono::days(day))};
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), format, static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                  static_cast<unsigned>(date.day()));
    return text.data();
}

}  // namespace

std::string FormatUtcDate(std::int64_t day) {
    return FormatDay("%04d-%02u-%02u", day);
}

std::string FormatUtcTime(std::int64_t seconds) {
    const std::int64_t time = seconds % kSecondsPerDay;
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "T%02d%02d%02dZ", static_cast<int>(time / 3600),
                  static_cast<int>(time / 60 % 60), static_cast<int>(time % 60));
    return FormatDay("%04d%02u%02u", seconds / kSecondsPerDay) + text.data();
}

}  // namespace connectdialog::stores
