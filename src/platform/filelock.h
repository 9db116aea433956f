// Locks between processes, by name.
//
// A lock is the kernel's lock on an empty file of that name in the user's run-time folder: $XDG_RUNTIME_DIR/brennmark,
// or, where the session has no folder for run time, `run` in the library's state folder. It is never a folder that
// others may look into: one that is open to others, belongs to another user or is a link is refused (5, 267), and so is
// a file in it. The lock ends with its holder, however that ends; the file stays, and means nothing.
//
// A lock belongs to the handle, not to the thread: two handles of one name exclude each other also within a process.
// Functions that fail set the last error.
#pragma once

#include <chrono>
#include <cstdint>
#include <string_view>

namespace connectdialog::platform {

using LockHandle = std::intptr_t;
inline constexpr LockHandle kInvalidLock = -1;

/// Opens the lock `name`, not held. A name is that of a file: 1 to 200 characters, no separator, no dot in front.
/// On failure: kInvalidLock; 87 for another name.
LockHandle OpenNamedLock(std::u16string_view name);
/// Waits without a limit for the lock, or with `wait` off gives false with 33 while another handle holds it.
bool AcquireNamedLock(LockHandle lock, bool wait);
/// Waits so long at most; false with 33 when that was in vain.
bool AcquireNamedLockFor(LockHandle lock, std::chrono::milliseconds wait);
void ReleaseNamedLock(LockHandle lock);
/// Releases the lock as well. kInvalidLock does nothing.
void CloseNamedLock(LockHandle lock);

}  // namespace connectdialog::platform
