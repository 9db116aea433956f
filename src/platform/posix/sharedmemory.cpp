#include "platform/sharedmemory.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include "platform/lasterror.h"
#include "platform/posix/runtimefile.h"

namespace connectdialog::platform {

namespace {

// Each one who has the memory open holds a shared lock on its file. An exclusive lock tells that nobody else has it
// open: then its content is no longer of use, and its name may go.

enum class Users { kOthers, kNone, kBusy };

bool HasName(int descriptor) {
    struct stat info {};
    return fstat(descriptor, &info) == 0 && info.st_nlink > 0;
}

/// Busy is a file that is just being made or removed by another.
Users FindUsers(int descriptor) {
    const bool isAlone = flock(descriptor, LOCK_EX | LOCK_NB) == 0;
    if (!isAlone && flock(descriptor, LOCK_SH | LOCK_NB) != 0) return Users::kBusy;
    if (!HasName(descriptor)) return Users::kBusy;
    return isAlone ? Users::kNone : Users::kOthers;
}

/// Room is taken at once: memory that is found to be missing at the first touch would end the process.
bool MakeContent(int descriptor, std::uint64_t size) {
    if (ftruncate(descriptor, 0) != 0) return FailFromErrno();
    const int failure = posix_fallocate(descriptor, 0, static_cast<off_t>(size));
    if (failure != 0) return FailWith(ErrorFromErrno(failure));
    return flock(descriptor, LOCK_SH | LOCK_NB) == 0 || FailFromErrno();
}

bool MapWhole(SharedMemory& memory, std::uint64_t size) {
    if (!GetFileSize(memory.mapping, memory.size)) return false;
    if (memory.size > kLargestSharedMemory) return FailWith(kInvalidParameter);
    if (size != kExistingSize && memory.size < size) return FailWith(kInsufficientBuffer);
    memory.view = MapFile(memory.mapping, memory.size, true);
    return memory.view != nullptr;
}

/// Opens the file in a state that is not just changing.
int OpenSettled(std::u16string_view name, Users& users) {
    constexpr int kRounds = 500;
    constexpr timespec kPause{0, 2'000'000};
    for (int round = 0; round < kRounds; ++round) {
        const int descriptor = OpenRuntimeFile(name);
        if (descriptor < 0) return -1;
        users = FindUsers(descriptor);
        if (users != Users::kBusy) return descriptor;
        close(descriptor);
        nanosleep(&kPause, nullptr);
    }
    SetLastErrorCode(kBusy);
    return -1;
}

bool Prepare(SharedMemory& memory, std::uint64_t size) {
    if (memory.existed) return MapWhole(memory, size);
    if (size == kExistingSize) return FailWith(kFileNotFound);
    return MakeContent(static_cast<int>(memory.mapping), size) && MapWhole(memory, size);
}

}  // namespace

bool OpenSharedMemory(std::u16string_view name, std::uint64_t size, SharedMemory& memory) {
    if (size == 0 || (size > kLargestSharedMemory && size != kExistingSize)) return FailWith(kInvalidParameter);
    Users users = Users::kBusy;
    SharedMemory opened;
    opened.mapping = OpenSettled(name, users);
    if (opened.mapping == kInvalidFile) return false;
    opened.existed = users == Users::kOthers;
    if (!Prepare(opened, size)) {
        const std::uint32_t error = GetLastErrorCode();
        CloseSharedMemory(name, opened);
        return FailWith(error);
    }
    memory = opened;
    SetLastErrorCode(memory.existed ? kAlreadyExists : kSuccess);
    return true;
}

bool IsSharedMemoryIntact(const SharedMemory& memory) {
    std::uint64_t size = 0;
    if (!IsPrivateFile(static_cast<int>(memory.mapping)) || !GetFileSize(memory.mapping, size)) return false;
    return size >= memory.size || FailWith(kInvalidParameter);
}

void ForgetSharedMemory(std::u16string_view name) {
    RemoveRuntimeFile(name);
}

void CloseSharedMemory(std::u16string_view name, SharedMemory& memory) {
    if (memory.mapping == kInvalidFile) return;
    UnmapFile(memory.view, memory.size);
    const int descriptor = static_cast<int>(memory.mapping);
    const bool isLast = flock(descriptor, LOCK_EX | LOCK_NB) == 0;
    // A file without a name was removed by another, and the name may be that of a newer one.
    if (isLast && HasName(descriptor)) RemoveRuntimeFile(name);
    close(descriptor);
    memory = SharedMemory();
}

}  // namespace connectdialog::platform
