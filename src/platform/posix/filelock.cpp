#include "platform/filelock.h"

#include <cerrno>
#include <sys/file.h>
#include <unistd.h>

#include "platform/lasterror.h"
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
    int result = 0;
    do result = flock(Descriptor(lock), wait ? LOCK_EX : LOCK_EX | LOCK_NB);
    while (result != 0 && errno == EINTR);
    return result == 0 || FailFromErrno();
}

void ReleaseNamedLock(LockHandle lock) {
    flock(Descriptor(lock), LOCK_UN);
}

void CloseNamedLock(LockHandle lock) {
    if (lock != kInvalidLock) close(Descriptor(lock));
}

}  // namespace connectdialog::platform
