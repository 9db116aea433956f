#include "sessiondb/runningsessions.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <vector>

#include "foundation/vbasicbuffer.h"
#include "foundation/vmemorymappedbuffer.h"
#include "foundation/vreportmessageparams.h"
#include "platform/filelock.h"
#include "platform/lasterror.h"
#include "platform/sharedmemory.h"

namespace connectdialog {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

/// For another question that is under way; longer than what a host that hangs costs that one.
constexpr milliseconds kQuestionPatience{1000};
/// For telling the sizes, which all hosts do at once, and for the whole question.
constexpr milliseconds kFirstPatience{800};
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
    /// On failure to open it: false with the last error.
    bool IsOpen() const { return handle != platform::kInvalidLock; }
    bool Acquire(milliseconds wait) { return IsOpen() && platform::AcquireNamedLockFor(handle, wait); }
    void Release() { platform::ReleaseNamedLock(handle); }

  private:
    platform::LockHandle handle;
};

constexpr std::u16string_view kBlock = VMemoryMappedBuffer::kSharedName;

/// The block of VMemoryMappedBuffer with its lock, which that would wait for without end. All that is done with the
/// memory is done while the lock is held.
class SharedBlock {
  public:
    SharedBlock() : lock(kBlock + u".lock"_v) {}
    SharedBlock(const SharedBlock&) = delete;
    SharedBlock& operator=(const SharedBlock&) = delete;
    ~SharedBlock() { platform::CloseSharedMemory(kBlock, memory); }

    bool Lock(milliseconds wait) { return lock.Acquire(wait); }
    void Unlock() { lock.Release(); }
    /// A new one, which nobody else has open.
    bool Make(std::uint64_t size) {
        platform::ForgetSharedMemory(kBlock);
        return platform::OpenSharedMemory(kBlock, size, memory);
    }
    bool Attach() { return platform::OpenSharedMemory(kBlock, platform::kExistingSize, memory); }
    /// The first `size` bytes; null when it has not so many.
    std::uint8_t* GetBytes(std::uint64_t size) const {
        const bool isUsable = size <= memory.size && platform::IsSharedMemoryIntact(memory);
        return isUsable ? static_cast<std::uint8_t*>(memory.view) : nullptr;
    }

  private:
    BoundedLock lock;
    platform::SharedMemory memory;
};

/// Copies what was written before it is looked at: the other process may change it meanwhile.
bool ReadList(const SharedBlock& block, std::uint64_t size, VStringArray& list) {
    const auto copy = VRef<VBasicBuffer>::Adopt(new VBasicBuffer(size));
    const std::uint8_t* const bytes = block.GetBytes(size);
    return bytes != nullptr && copy->Append(bytes, size, 0) != nullptr && list.ReadFrom(copy.Get());
}

/// Asks one host for its list, which needs `size` bytes. False when it gives none.
bool FetchList(const platform::HostName& host, std::uint64_t size, Clock::time_point deadline, VStringArray& list) {
    SharedBlock block;
    if (size > kMostBytes || !block.Lock(TimeUntil(deadline)) || !block.Make(size)) return false;
    block.Unlock();
    const auto answers = platform::SendToHosts({host}, kRunningSessionsMessage, 0, size, deadline);
    if (answers[0].state == platform::HostState::kGone) return true;
    const std::uint64_t written = answers[0].value;
    const bool isUsable = answers[0].state == platform::HostState::kAnswered && written > 0 && written <= size;
    return isUsable && block.Lock(TimeUntil(deadline)) && ReadList(block, written, list);
}

}  // namespace

RunningSessions GetRunningSessionPaths() {
    RunningSessions running;
    std::vector<platform::HostName> hosts;
    for (const std::u16string_view frameClass : {kNorHaldenFrameClass, kTessalyFrameClass}) {
        const platform::FoundHosts found = platform::FindHosts(frameClass);
        hosts.insert(hosts.end(), found.names.begin(), found.names.end());
        if (found.error != 0) running.error = found.error;
    }
    if (hosts.empty()) return running;

    const Clock::time_point start = Clock::now();
    // One question at a time: all share the block.
    BoundedLock question(kBlock + u".question"_v);
    if (!question.IsOpen()) {
        running.error = platform::GetLastErrorCode();
        running.silentHosts = hosts.size();
        return running;
    }
    if (!question.Acquire(kQuestionPatience)) {
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

VUnicodeString DescribeUnheardHosts(const RunningSessions& running) {
    VUnicodeString silent;
    VUnicodeString unfound;
    VReportMessageParams reason(running.error);
    if (running.silentHosts > 0)
        silent.Format(u"Running applications that do not answer: %1!d!\n", running.silentHosts);
    if (running.error != 0) unfound.Format(u"Running applications may not have been found: %1\n", reason.GetText());
    const VUnicodeString text = silent + unfound;
    return text.IsEmpty() ? text : text + u"What they have open is not known.";
}

RunningSessionsHost::RunningSessionsHost(std::u16string_view frameClass)
    : announcement(frameClass, [this](const platform::HostMessage& message) { return Answer(message); }) {}

void RunningSessionsHost::SetPaths(const VStringArray& paths) {
    const std::lock_guard lock(guard);
    openPaths = paths;
}

std::uint64_t RunningSessionsHost::Answer(const platform::HostMessage& message) {
    if (message.number != kRunningSessionsMessage || message.first != 0) return 0;
    const auto list = VRef<VBasicBuffer>::Adopt(new VBasicBuffer(0));
    {
        const std::lock_guard lock(guard);
        if (openPaths.IsEmpty() || !openPaths.WriteTo(list.Get())) return 0;
    }
    const std::uint64_t size = list->GetDataLength();
    if (message.second == 0) return size;
    SharedBlock block;
    // An asker that gave up may have made the block for another host since.
    if (size > message.second || !block.Lock(kAnswerPatience) || !message.isAwaited() || !block.Attach()) return 0;
    std::uint8_t* const bytes = block.GetBytes(size);
    if (bytes == nullptr) return 0;
    std::memcpy(bytes, list->GetData(), size);
    return size;
}

}  // namespace connectdialog
