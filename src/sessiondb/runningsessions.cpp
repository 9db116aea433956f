#include "sessiondb/runningsessions.h"

#include <chrono>
#include <vector>

#include "foundation/vbasicbuffer.h"
#include "foundation/vmemorymappedbuffer.h"
#include "platform/filelock.h"

namespace connectdialog {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

/// For telling the sizes, which all hosts do at once, and for the whole question.
constexpr milliseconds kFirstPatience{1000};
constexpr milliseconds kWholePatience{2000};
/// What one host has for writing its list, so that one that stops there leaves time for the others.
constexpr milliseconds kWritePatience{400};
/// What this application waits for another one that has the block's lock.
constexpr milliseconds kAnswerPatience{500};
constexpr std::uint64_t kMostBytes = std::uint64_t{16} << 20;

milliseconds TimeUntil(Clock::time_point deadline) {
    return std::max(milliseconds(0), std::chrono::duration_cast<milliseconds>(deadline - Clock::now()));
}

/// A lock between processes that is not waited for without end.
class BoundedLock {
  public:
    explicit BoundedLock(std::u16string_view name) : handle(platform::OpenNamedLock(name)) {}
    BoundedLock(const BoundedLock&) = delete;
    BoundedLock& operator=(const BoundedLock&) = delete;
    ~BoundedLock() { platform::CloseNamedLock(handle); }
    bool Acquire(milliseconds wait) {
        return handle != platform::kInvalidLock && platform::AcquireNamedLockFor(handle, wait);
    }

  private:
    platform::LockHandle handle;
};

/// Whether the block's own lock, which is waited for without end, is free or comes free in time.
bool IsBlockFree(milliseconds wait) {
    return BoundedLock(VMemoryMappedBuffer::kSharedName + u".lock"_v).Acquire(wait);
}

/// Copies what was written before it is looked at: the other process may change it meanwhile.
bool ReadList(VMemoryMappedBuffer& block, std::uint64_t size, VStringArray& list) {
    const auto copy = VRef<VBasicBuffer>::Adopt(new VBasicBuffer(size));
    const VSynchGuard guard(*block.GetLock());
    const std::uint8_t* const bytes = block.GetData();
    return bytes != nullptr && block.GetCapacity() >= size && copy->Append(bytes, size, 0) != nullptr &&
           list.ReadFrom(copy.Get());
}

/// Asks one host for its list, which needs `size` bytes. False when it gives none.
bool FetchList(const platform::HostName& host, std::uint64_t size, Clock::time_point deadline, VStringArray& list) {
    if (size > kMostBytes || !IsBlockFree(TimeUntil(deadline))) return false;
    const auto block = VRef<VMemoryMappedBuffer>::Adopt(new VMemoryMappedBuffer);
    if (!block->Create(size)) return false;
    const auto answers = platform::SendToHosts({host}, kRunningSessionsMessage, 0, size, deadline);
    if (answers[0].state == platform::HostState::kGone) return true;
    const std::uint64_t written = answers[0].value;
    const bool isUsable = answers[0].state == platform::HostState::kAnswered && written > 0 && written <= size;
    return isUsable && IsBlockFree(TimeUntil(deadline)) && ReadList(*block, written, list);
}

}  // namespace

RunningSessions GetRunningSessionPaths() {
    RunningSessions running;
    std::vector<platform::HostName> hosts = platform::FindHosts(kNorHaldenFrameClass);
    for (platform::HostName& host : platform::FindHosts(kTessalyFrameClass)) hosts.push_back(std::move(host));
    if (hosts.empty()) return running;

    const Clock::time_point start = Clock::now();
    // One question at a time: all share the block.
    BoundedLock question(VMemoryMappedBuffer::kSharedName + u".question"_v);
    if (!question.Acquire(kFirstPatience)) {
        running.isBusy = true;
        return running;
    }
    const Clock::time_point firstDeadline = std::min(Clock::now() + kFirstPatience, start + kWholePatience);
    const auto sizes = platform::SendToHosts(hosts, kRunningSessionsMessage, 0, 0, firstDeadline);
    for (std::size_t i = 0; i < hosts.size(); ++i) {
        if (sizes[i].state == platform::HostState::kGone) continue;
        const bool hasAnswered = sizes[i].state == platform::HostState::kAnswered;
        if (hasAnswered && sizes[i].value == 0) continue;
        VStringArray list;
        const Clock::time_point deadline = std::min(Clock::now() + kWritePatience, start + kWholePatience);
        if (hasAnswered && FetchList(hosts[i], sizes[i].value, deadline, list))
            running.paths.Append(list);
        else
            ++running.silentHosts;
    }
    return running;
}

RunningSessionsHost::RunningSessionsHost(std::u16string_view frameClass)
    : announcement(frameClass, [this](std::uint32_t message, std::uint64_t first, std::uint64_t second) {
          return Answer(message, first, second);
      }) {}

void RunningSessionsHost::SetPaths(const VStringArray& paths) {
    const std::lock_guard lock(guard);
    openPaths = paths;
}

std::uint64_t RunningSessionsHost::Answer(std::uint32_t message, std::uint64_t first, std::uint64_t second) {
    if (message != kRunningSessionsMessage || first != 0) return 0;
    const auto list = VRef<VBasicBuffer>::Adopt(new VBasicBuffer(0));
    {
        const std::lock_guard lock(guard);
        if (openPaths.IsEmpty() || !openPaths.WriteTo(list.Get())) return 0;
    }
    const std::uint64_t size = list->GetDataLength();
    if (second == 0) return size;
    if (size > second || !IsBlockFree(kAnswerPatience)) return 0;
    const auto block = VRef<VMemoryMappedBuffer>::Adopt(new VMemoryMappedBuffer);
    if (!block->Create(platform::kExistingSize)) return 0;
    const VSynchGuard lock(*block->GetLock());
    return block->Append(list->GetData(), size, 0) != nullptr ? size : 0;
}

}  // namespace connectdialog
