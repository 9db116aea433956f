#include "platform/clock.h"

#include <atomic>
#include <ctime>

namespace connectdialog::platform {

namespace {

std::uint64_t ReadSystemClock() {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return kUnixEpoch + static_cast<std::uint64_t>(now.tv_sec) * kFileTimePerSecond +
           static_cast<std::uint64_t>(now.tv_nsec) / 100;
}

std::atomic<Clock> currentClock{ReadSystemClock};

}  // namespace

std::uint64_t GetFileTimeNow() {
    return currentClock.load()();
}
void SetClock(Clock clock) {
    currentClock = clock != nullptr ? clock : ReadSystemClock;
}

}  // namespace connectdialog::platform
