#include "platform/settingshives.h"

#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

#include "platform/files.h"
#include "platform/knownfolders.h"
#include "platform/lasterror.h"
#include "platform/paths.h"
#include "platform/userfiles.h"

namespace connectdialog::platform {

namespace {

constexpr std::chrono::seconds kLockWait{5};
constexpr std::chrono::milliseconds kLockStep{2};

/// Closes the descriptor when it goes out of scope.
class Descriptor {
  public:
    explicit Descriptor(int descriptor) : number(descriptor) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (number >= 0) close(number);
    }
    const int number;
};

mode_t FileMode(HiveScope scope) {
    return scope == HiveScope::kUser ? 0600 : 0644;
}

/// Where the file itself stands when the path is a link.
std::string ResolveLink(const std::string& path) {
    char resolved[PATH_MAX];
    return realpath(path.c_str(), resolved) != nullptr ? resolved : path;
}

std::string FolderOf(const std::string& path) {
    const std::size_t separator = path.rfind('/');
    if (separator == path.npos) return ".";
    return path.substr(0, separator == 0 ? 1 : separator);
}

bool SyncFolder(const std::string& folder) {
    const Descriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return (descriptor.number >= 0 && fsync(descriptor.number) == 0) || FailFromErrno();
}

/// The machine's folder is everybody's to read, whatever the administrator's mask says.
bool MakeMachineFolder(const std::string& folder) {
    if (mkdir(folder.c_str(), 0755) != 0) return errno == EEXIST || FailFromErrno();
    return chmod(folder.c_str(), 0755) == 0 || FailFromErrno();
}

bool MakeFolder(HiveScope scope, const std::string& folder) {
    if (scope == HiveScope::kMachine) return MakeMachineFolder(folder);
    return CreateUserFolder(FromNativePath(folder));
}

HiveStamp StampOf(const struct stat& info) {
    const auto number = [](auto value) { return static_cast<std::uint64_t>(value); };
    return {number(info.st_dev),          number(info.st_ino),
            number(info.st_size),         number(info.st_mtim.tv_sec) * 1'000'000'000U + number(info.st_mtim.tv_nsec),
            number(info.st_ctim.tv_nsec), number(info.st_ctim.tv_sec)};
}

/// A new file with these bytes, durable before it gets its name. What a killed writer left there goes first.
bool WriteNewFile(const std::string& path, std::string_view bytes, mode_t mode) {
    if (unlink(path.c_str()) != 0 && errno != ENOENT) return FailFromErrno();
    const Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
    if (file.number < 0) return FailFromErrno();
    if (!WriteToFile(file.number, bytes.data(), bytes.size())) return false;
    return (fchmod(file.number, mode) == 0 && fsync(file.number) == 0) || FailFromErrno();
}

bool LockWithin(int descriptor, std::chrono::steady_clock::duration wait) {
    const auto end = std::chrono::steady_clock::now() + wait;
    while (flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR) return FailFromErrno();
        if (std::chrono::steady_clock::now() >= end) return FailWith(kLockViolation);
        std::this_thread::sleep_for(kLockStep);
    }
    return true;
}

}  // namespace

std::u16string GetHivePath(HiveScope scope) {
    const bool isUser = scope == HiveScope::kUser;
    const std::u16string folder =
        GetKnownFolder(isUser ? KnownFolder::kConfiguration : KnownFolder::kMachineConfiguration);
    return folder.empty() ? folder : folder + (isUser ? u"\\user.reg" : u"\\machine.reg");
}

bool GetHiveStamp(std::u16string_view path, HiveStamp& stamp) {
    struct stat info = {};
    if (stat(ToNativePath(path).c_str(), &info) != 0) return FailFromErrno();
    stamp = StampOf(info);
    return true;
}

bool ReadHiveFile(std::u16string_view path, std::size_t limit, std::string& bytes, HiveStamp& stamp) {
    const Descriptor file(open(ToNativePath(path).c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat info = {};
    if (file.number < 0 || fstat(file.number, &info) != 0) return FailFromErrno();
    if (!S_ISREG(info.st_mode)) return FailWith(kInvalidData);
    const auto size = static_cast<std::size_t>(info.st_size);
    if (size > limit) return FailWith(kFileTooLarge);
    std::string content(size, '\0');
    std::size_t done = 0;
    if (!ReadFromFile(file.number, content.data(), size, done)) return false;
    content.resize(done);
    bytes = std::move(content);
    stamp = StampOf(info);
    return true;
}

HiveLock::HiveLock(HiveScope scope, std::u16string_view path) : target(ResolveLink(ToNativePath(path))), scope(scope) {
    if (target.empty()) {
        FailWith(kPathNotFound);
        return;
    }
    if (!MakeFolder(scope, FolderOf(target))) return;
    const std::string lockPath = target + ".lock";
    const int file = open(lockPath.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (file < 0) {
        FailFromErrno();
    } else if (LockWithin(file, kLockWait)) {
        descriptor = file;
    } else {
        close(file);
    }
}

HiveLock::~HiveLock() {
    if (descriptor >= 0) close(descriptor);
}

bool HiveLock::Replace(std::string_view bytes) {
    const std::string draft = target + ".new";
    if (!WriteNewFile(draft, bytes, FileMode(scope))) {
        const std::uint32_t error = GetLastErrorCode();
        unlink(draft.c_str());
        return FailWith(error);
    }
    if (std::rename(draft.c_str(), target.c_str()) != 0) return FailFromErrno();
    return SyncFolder(FolderOf(target));
}

}  // namespace connectdialog::platform
