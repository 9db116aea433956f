#include "platform/filelock.h"

#include <sys/file.h>
#include <unistd.h>

#include "platform/posix/nativefile.h"
#include "platform/posix/runtimefile.h"

namespace connectdialog::platform {

namespace {

int Descriptor(LockHandle lock) {
    return static_cast<int>(lock);
}

}  // namespace

LockHandle OpenNamedLock(std::u16string_view name) {
    return OpenRuntimeFile(name);
}

bool AcquireNamedLock(LockHandle lock, bool wait) {
    if (wait) return LockExclusively(Descriptor(lock), {});
    return LockExclusively(Descriptor(lock), std::chrono::milliseconds(0));
}

bool AcquireNamedLockFor(LockHandle lock, std::chrono::milliseconds wait) {
    return LockExclusively(Descriptor(lock), wait);
}

void ReleaseNamedLock(LockHandle lock) {
    flock(Descriptor(lock), LOCK_UN);
}

void CloseNamedLock(LockHandle lock) {
    if (lock != kInvalidLock) close(Descriptor(lock));
}

}  // namespace connectdialog::platform
