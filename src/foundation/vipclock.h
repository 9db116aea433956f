// A lock between processes.
#pragma once

#include <cstdint>
#include <mutex>
#include <string_view>

#include "foundation/isynchobject.h"
#include "foundation/vreportmessageparams.h"
#include "platform/filelock.h"

namespace connectdialog {

/// Excludes the holders of all locks of its name, in every process of the user, and the other threads that use this
/// object. Another process is handed the lock by its name, which is derived from that of what the lock guards. A holder
/// that dies gives the lock up.
///
/// The thread that holds it may lock it again, through the same object: two objects of one name in one thread exclude
/// each other, and the second waits for ever. Hold it only around the own use of what it guards, never while waiting
/// for the process that it excludes.
class VIpcLock : public VUnknown<ISynchObject> {
  public:
    /// Makes the lock, not held; `name` as platform::OpenNamedLock takes it.
    explicit VIpcLock(std::u16string_view name);
    VIpcLock(const VIpcLock&) = delete;
    VIpcLock& operator=(const VIpcLock&) = delete;
    /// Gives the lock up, and keeps the last error of the thread as it was.
    ~VIpcLock() override;

    /// Whether the lock was made. One that was not excludes only the threads that use this object.
    bool IsCreated() const { return handle != platform::kInvalidLock; }
    /// Code 0, or the last error with which the lock could not be made, or not be taken when it was last tried: it then
    /// excludes no other process. To be asked by the thread that holds the lock.
    const VReportMessageParams& GetStatus() const { return status; }

    /// Waits without a limit.
    void Lock() override;
    /// Requires: this thread holds the lock.
    void Unlock() override;

  private:
    VReportMessageParams status;
    platform::LockHandle handle;
    /// The system's lock knows no threads.
    std::recursive_mutex threads;
    int depth = 0;
};

}  // namespace connectdialog
