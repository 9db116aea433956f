#include "platform/files.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <limits>
#include <string>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/lasterror.h"
#include "platform/paths.h"
#include "platform/posix/nativefile.h"

namespace connectdialog::platform {

namespace {

constexpr std::uint64_t kLargestOffset = std::numeric_limits<off_t>::max();
constexpr std::uint32_t kAnyRead = kFileReadData | kGenericRead;
constexpr std::uint32_t kAnyWrite = kFileWriteData | kGenericWrite;

int Descriptor(FileHandle file) {
    return static_cast<int>(file);
}

/// A descriptor that does not allow the operation is a matter of access; only a wrong one is an invalid handle.
bool FailFromTransfer(FileHandle file) {
    if (errno == EBADF && fcntl(Descriptor(file), F_GETFD) >= 0) return FailWith(kAccessDenied);
    return FailFromErrno();
}

int AccessFlags(std::uint32_t access) {
    const bool reads = (access & kAnyRead) != 0;
    const bool writes = (access & kAnyWrite) != 0;
    const bool appends = (access & kFileAppendData) != 0 && !writes;
    const int direction = writes || appends ? (reads ? O_RDWR : O_WRONLY) : O_RDONLY;
    return direction | (appends ? O_APPEND : 0);
}

bool IsDispositionKnown(std::uint32_t disposition) {
    return disposition >= kCreateNew && disposition <= kTruncateExisting;
}
bool Creates(std::uint32_t disposition) {
    return disposition != kOpenExisting && disposition != kTruncateExisting;
}
bool Empties(std::uint32_t disposition) {
    return disposition == kCreateAlways || disposition == kTruncateExisting;
}

/// Opens what is there, or else makes the file, and tells which of the two it was. Never both in one call: whether a
/// file was made must be known for certain.
int OpenDescriptor(const std::string& path, const FileOpening& opening, bool& existed) {
    // A pipe without a partner must not block; regular files do not care.
    int flags = AccessFlags(opening.access) | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
    if ((opening.attributes & kFileFlagOwnOnly) != 0) flags |= O_NOFOLLOW;
    constexpr int kRounds = 100;
    for (int round = 0; round < kRounds; ++round) {
        existed = false;
        if (Creates(opening.disposition)) {
            const int made = open(path.c_str(), flags | O_CREAT | O_EXCL, opening.permissions & kAllReadAndWrite);
            if (made >= 0 || errno != EEXIST) return made;
            if (opening.disposition == kCreateNew) return -1;
        }
        existed = true;
        const int found = open(path.c_str(), flags);
        // Removed between the two calls: once more.
        if (found >= 0 || errno != ENOENT || !Creates(opening.disposition)) return found;
    }
    return -1;
}

bool IsAcceptable(int descriptor, const FileOpening& opening) {
    struct stat info {};
    if (fstat(descriptor, &info) != 0) return FailFromErrno();
    const bool isOurs = (opening.attributes & kFileFlagOwnOnly) == 0 || info.st_uid == geteuid();
    return (S_ISREG(info.st_mode) && isOurs) || FailWith(kAccessDenied);
}

bool TakeShare(int descriptor, std::uint32_t share) {
    const int kind = share == kShareNone ? LOCK_EX : LOCK_SH;
    if (flock(descriptor, kind | LOCK_NB) == 0) return true;
    // Anything else means that this file system has no such locks.
    return errno != EWOULDBLOCK || FailWith(kSharingViolation);
}

bool Prepare(int descriptor, const FileOpening& opening) {
    if (!IsAcceptable(descriptor, opening) || !TakeShare(descriptor, opening.share)) return false;
    return !Empties(opening.disposition) || ftruncate(descriptor, 0) == 0 || FailFromErrno();
}

/// Runs `transfer(done)` until `size` bytes went through or it gives 0.
template <class Transfer>
bool TransferAll(FileHandle file, std::size_t size, std::size_t& done, Transfer transfer) {
    for (done = 0; done < size;) {
        const ssize_t moved = transfer(done);
        if (moved < 0 && errno == EINTR) continue;
        if (moved < 0) return FailFromTransfer(file);
        if (moved == 0) return true;
        done += static_cast<std::size_t>(moved);
    }
    return true;
}

bool IsRangeValid(std::uint64_t offset, std::size_t size) {
    return (offset <= kLargestOffset && size <= kLargestOffset - offset) || FailWith(kInvalidParameter);
}

/// Sets a lock of the open file description. The classic locks of POSIX would not do: they belong to the process, so
/// that two handles in one process do not exclude each other, and closing any handle of the file drops them all.
bool SetRangeLock(FileHandle file, std::uint64_t offset, std::uint64_t length, short type, bool wait) {
    if (length == 0) return true;
    if (offset > kLargestOffset) return FailWith(kInvalidParameter);
    struct flock range {};
    range.l_type = type;
    range.l_whence = SEEK_SET;
    range.l_start = static_cast<off_t>(offset);
    // To the system a length of 0 means up to the end, however far that moves.
    range.l_len = length > kLargestOffset - offset ? 0 : static_cast<off_t>(length);
    int result = 0;
    do result = fcntl(Descriptor(file), wait ? F_OFD_SETLKW : F_OFD_SETLK, &range);
    while (result != 0 && errno == EINTR);
    if (result == 0) return true;
    return errno == EACCES ? FailWith(kLockViolation) : FailFromTransfer(file);
}

bool CanRead(FileHandle file) {
    return (fcntl(Descriptor(file), F_GETFL) & O_ACCMODE) != O_WRONLY;
}

}  // namespace

FileHandle OpenFile(std::u16string_view path, const FileOpening& opening) {
    // Only what may be written can be emptied.
    const bool canEmpty = (opening.access & (kAnyWrite | kFileAppendData)) != 0;
    if (!IsDispositionKnown(opening.disposition) || (Empties(opening.disposition) && !canEmpty)) {
        SetLastErrorCode(kInvalidParameter);
        return kInvalidFile;
    }
    bool existed = false;
    const int descriptor = OpenDescriptor(ToNativePath(path), opening, existed);
    if (descriptor < 0) {
        FailFromErrno();
        if (errno == EEXIST) SetLastErrorCode(kFileExists);
        // A pipe that nobody reads.
        if (errno == ENXIO) SetLastErrorCode(kAccessDenied);
        return kInvalidFile;
    }
    if (!Prepare(descriptor, opening)) {
        close(descriptor);
        return kInvalidFile;
    }
    const bool tells = opening.disposition == kCreateAlways || opening.disposition == kOpenAlways;
    SetLastErrorCode(tells && existed ? kAlreadyExists : kSuccess);
    return descriptor;
}

bool CloseFile(FileHandle file) {
    return close(Descriptor(file)) == 0 || FailFromErrno();
}

bool ReadFromFile(FileHandle file, void* data, std::size_t size, std::size_t& done) {
    return TransferAll(file, size, done, [&](std::size_t at) {
        return read(Descriptor(file), static_cast<char*>(data) + at, size - at);
    });
}

bool ReadFromFileAt(FileHandle file, std::uint64_t offset, void* data, std::size_t size, std::size_t& done) {
    done = 0;
    return IsRangeValid(offset, size) && TransferAll(file, size, done, [&](std::size_t at) {
               return pread(Descriptor(file), static_cast<char*>(data) + at, size - at,
                            static_cast<off_t>(offset + at));
           });
}

bool WriteToFile(FileHandle file, const void* data, std::size_t size) {
    std::size_t done = 0;
    const bool through = TransferAll(file, size, done, [&](std::size_t at) {
        return write(Descriptor(file), static_cast<const char*>(data) + at, size - at);
    });
    return through && (done == size || FailWith(kDiskFull));
}

bool WriteToFileAt(FileHandle file, std::uint64_t offset, const void* data, std::size_t size) {
    std::size_t done = 0;
    const bool through = IsRangeValid(offset, size) && TransferAll(file, size, done, [&](std::size_t at) {
                             return pwrite(Descriptor(file), static_cast<const char*>(data) + at, size - at,
                                           static_cast<off_t>(offset + at));
                         });
    return through && (done == size || FailWith(kDiskFull));
}

bool ReplaceFileWith(std::u16string_view path, std::string_view bytes) {
    const std::string file = ToNativePath(path);
    if (file.empty()) return FailWith(kFileNotFound);
    const std::string target = ResolveLink(file);
    if (target.empty()) return false;
    struct stat info {};
    const bool isThere = stat(target.c_str(), &info) == 0;
    if (isThere && !S_ISREG(info.st_mode)) return FailWith(kAccessDenied);
    return ReplaceContent(target, bytes, kOwnerReadsAndWrites);
}

bool SeekInFile(FileHandle file, std::int64_t offset, SeekOrigin origin, std::uint64_t& position) {
    const int whence = origin == SeekOrigin::kBegin ? SEEK_SET : origin == SeekOrigin::kCurrent ? SEEK_CUR : SEEK_END;
    const off_t moved = lseek(Descriptor(file), offset, whence);
    if (moved < 0) return FailFromErrno();
    position = static_cast<std::uint64_t>(moved);
    return true;
}

bool EndFileHere(FileHandle file) {
    std::uint64_t position = 0;
    if (!SeekInFile(file, 0, SeekOrigin::kCurrent, position)) return false;
    if (ftruncate(Descriptor(file), static_cast<off_t>(position)) == 0) return true;
    // The system's word for a handle that cannot write.
    return errno == EINVAL ? FailWith(kAccessDenied) : FailFromErrno();
}

bool GetFileSize(FileHandle file, std::uint64_t& size) {
    struct stat info {};
    if (fstat(Descriptor(file), &info) != 0) return FailFromErrno();
    size = static_cast<std::uint64_t>(info.st_size);
    return true;
}

bool LockFileRange(FileHandle file, std::uint64_t offset, std::uint64_t length, LockMode mode, bool wait) {
    const bool shared = mode == LockMode::kShared && CanRead(file);
    return SetRangeLock(file, offset, length, shared ? F_RDLCK : F_WRLCK, wait);
}

bool UnlockFileRange(FileHandle file, std::uint64_t offset, std::uint64_t length) {
    return SetRangeLock(file, offset, length, F_UNLCK, false);
}

void* MapFile(FileHandle file, std::size_t size, bool writable) {
    std::uint64_t available = 0;
    if (!GetFileSize(file, available)) return nullptr;
    if (size == 0 || size > available) {
        SetLastErrorCode(kInvalidParameter);
        return nullptr;
    }
    const int protection = writable ? PROT_READ | PROT_WRITE : PROT_READ;
    void* view = mmap(nullptr, size, protection, MAP_SHARED, Descriptor(file), 0);
    if (view != MAP_FAILED) return view;
    FailFromErrno();
    return nullptr;
}

void UnmapFile(void* view, std::size_t size) {
    if (view != nullptr) munmap(view, size);
}

}  // namespace connectdialog::platform
