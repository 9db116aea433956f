#include "platform/localtime.h"

#include <ctime>

#include "platform/lasterror.h"

namespace connectdialog::platform {

bool GetLocalOffset(std::int64_t unixSeconds, std::int64_t& offset) {
    const std::time_t moment = unixSeconds;
    std::tm local{};
    // localtime_r need not look whether the zone has changed.
    tzset();
    if (localtime_r(&moment, &local) == nullptr) return FailFromErrno();
    offset = local.tm_gmtoff;
    return true;
}

}  // namespace connectdialog::platform
