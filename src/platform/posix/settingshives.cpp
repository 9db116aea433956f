#include "platform/settingshives.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/knownfolders.h"
#include "platform/lasterror.h"
#include "platform/paths.h"
#include "platform/posix/nativefile.h"

namespace connectdialog::platform {

namespace {

constexpr std::chrono::seconds kLockWait{5};

mode_t FileMode(HiveScope scope) {
    return scope == HiveScope::kUser ? 0600 : 0644;
}
mode_t FolderMode(HiveScope scope) {
    return scope == HiveScope::kUser ? 0700 : 0755;
}

HiveStamp StampOf(const struct stat& info) {
    const auto number = [](auto value) { return static_cast<std::uint64_t>(value); };
    return {number(info.st_dev),          number(info.st_ino),
            number(info.st_size),         number(info.st_mtim.tv_sec) * 1'000'000'000U + number(info.st_mtim.tv_nsec),
            number(info.st_ctim.tv_nsec), number(info.st_ctim.tv_sec)};
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
    struct stat info {};
    if (!ReadPlainFile(ToNativePath(path), limit, bytes, info)) return false;
    stamp = StampOf(info);
    return true;
}

bool CanReplaceHive(std::u16string_view path) {
    const std::string file = ToNativePath(path);
    if (file.empty()) return FailWith(kPathNotFound);
    const std::string target = ResolveLink(file);
    if (target.empty()) return false;
    std::string folder = FolderOf(target);
    while (faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) != 0) {
        const bool canBeMade = errno == ENOENT && folder != "." && folder != "/";
        if (!canBeMade) return FailFromErrno();
        folder = FolderOf(folder);
    }
    return true;
}

HiveLock::HiveLock(HiveScope scope, std::u16string_view path) : scope(scope) {
    const std::string file = ToNativePath(path);
    if (file.empty()) FailWith(kPathNotFound);
    if (!file.empty()) target = ResolveLink(file);
    if (target.empty() || !MakeFolders(FolderOf(target), FolderMode(scope))) return;
    const std::string lockPath = target + ".lock";
    const int lock = open(lockPath.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (lock < 0) {
        FailFromErrno();
    } else if (LockExclusively(lock, kLockWait)) {
        descriptor = lock;
    } else {
        close(lock);
    }
}

HiveLock::~HiveLock() {
    if (descriptor >= 0) close(descriptor);
}

bool HiveLock::Replace(std::string_view bytes) {
    // What a writer left that was killed: nobody else writes here while the lock is held.
    const std::string draft = target + ".new";
    if (unlink(draft.c_str()) != 0 && errno != ENOENT) return FailFromErrno();
    return ReplaceContent(target, bytes, FileMode(scope));
}

}  // namespace connectdialog::platform
