#include "platform/posix/nativefile.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>

#include "platform/files.h"
#include "platform/lasterror.h"

namespace connectdialog::platform {

namespace {

constexpr std::chrono::milliseconds kLockStep{2};

bool IsFolder(const std::string& path) {
    struct stat info {};
    if (stat(path.c_str(), &info) != 0) return FailFromErrno();
    return S_ISDIR(info.st_mode) || FailWith(kNotAFolder);
}

bool MakeFolder(const std::string& path, mode_t mode) {
    if (mkdir(path.c_str(), mode) == 0) {
        const bool isForOthers = (mode & (S_IRWXG | S_IRWXO)) != 0;
        return !isForOthers || chmod(path.c_str(), mode) == 0 || FailFromErrno();
    }
    // A folder above a home may refuse the attempt in other ways than by saying that it is there.
    const int error = errno;
    if (IsFolder(path)) return true;
    return error == EEXIST ? FailWith(kNotAFolder) : FailWith(ErrorFromErrno(error));
}

/// A new file with these bytes, durable before it gets its name.
bool WriteDraft(int file, std::string_view bytes, mode_t mode) {
    if (!WriteToFile(file, bytes.data(), bytes.size())) return false;
    return (fchmod(file, mode) == 0 && fsync(file) == 0) || FailFromErrno();
}

bool TakeLock(int descriptor, int kind) {
    int result = 0;
    do result = flock(descriptor, kind);
    while (result != 0 && errno == EINTR);
    return result == 0;
}

}  // namespace

std::string FolderOf(const std::string& path) {
    const std::size_t separator = path.rfind('/');
    if (separator == path.npos) return ".";
    return path.substr(0, separator == 0 ? 1 : separator);
}

bool MakeFolders(const std::string& path, mode_t mode) {
    if (path.empty()) return FailWith(kPathNotFound);
    for (std::size_t end = path.find('/', 1); end != path.npos; end = path.find('/', end + 1)) {
        if (!MakeFolder(path.substr(0, end), mode)) return false;
    }
    return MakeFolder(path, mode);
}

bool SyncFolder(const std::string& folder) {
    const OwnedDescriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // Some file systems have no such thing as a folder to be synced: what stands there is as durable as it gets.
    return (descriptor.number >= 0 && (fsync(descriptor.number) == 0 || errno == EINVAL)) || FailFromErrno();
}

std::string ResolveLink(const std::string& path) {
    struct stat info {};
    if (lstat(path.c_str(), &info) != 0 || !S_ISLNK(info.st_mode)) return path;
    char resolved[PATH_MAX];
    if (realpath(path.c_str(), resolved) != nullptr) return resolved;
    FailWith(errno == EACCES ? kAccessDenied : kCannotResolveName);
    return {};
}

bool ReadPlainFile(const std::string& path, std::size_t limit, std::string& bytes, struct stat& state) {
    const OwnedDescriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat info {};
    if (file.number < 0 || fstat(file.number, &info) != 0) return FailFromErrno();
    if (!S_ISREG(info.st_mode)) return FailWith(kInvalidData);
    const auto size = static_cast<std::size_t>(info.st_size);
    if (size > limit) return FailWith(kFileTooLarge);
    std::string content(size, '\0');
    std::size_t done = 0;
    if (!ReadFromFile(file.number, content.data(), size, done)) return false;
    content.resize(done);
    bytes = std::move(content);
    state = info;
    return true;
}

bool ReplaceContent(const std::string& path, std::string_view bytes, mode_t mode) {
    // A name of its own each time: what a kill leaves behind stands in nobody's way.
    std::string draft = FolderOf(path) + "/.new-XXXXXX";
    const OwnedDescriptor file(mkostemp(draft.data(), O_CLOEXEC));
    if (file.number < 0) return FailFromErrno();
    const bool isPlaced =
        WriteDraft(file.number, bytes, mode) && (std::rename(draft.c_str(), path.c_str()) == 0 || FailFromErrno());
    if (isPlaced) return SyncFolder(FolderOf(path));
    unlink(draft.c_str());
    return false;
}

bool LockExclusively(int descriptor, std::optional<std::chrono::milliseconds> wait) {
    if (!wait) return TakeLock(descriptor, LOCK_EX) || FailFromErrno();
    const auto end = std::chrono::steady_clock::now() + *wait;
    while (!TakeLock(descriptor, LOCK_EX | LOCK_NB)) {
        if (errno != EWOULDBLOCK) return FailFromErrno();
        if (std::chrono::steady_clock::now() >= end) return FailWith(kLockViolation);
        std::this_thread::sleep_for(kLockStep);
    }
    return true;
}

}  // namespace connectdialog::platform
