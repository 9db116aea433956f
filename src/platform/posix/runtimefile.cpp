#include "platform/posix/runtimefile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/codepage.h"
#include "platform/knownfolders.h"
#include "platform/lasterror.h"
#include "platform/paths.h"
#include "platform/userfiles.h"

namespace connectdialog::platform {

namespace {

constexpr std::size_t kLongestName = 200;

std::u16string RuntimeFolder() {
    std::u16string folder = GetKnownFolder(KnownFolder::kRuntime);
    if (!folder.empty()) return folder;
    folder = GetKnownFolder(KnownFolder::kState);
    return folder.empty() ? folder : folder + u"\\run";
}

bool IsPrivate(const struct stat& info, mode_t kind) {
    return (info.st_mode & S_IFMT) == kind && info.st_uid == geteuid() && (info.st_mode & (S_IRWXG | S_IRWXO)) == 0;
}

bool IsFileName(std::u16string_view name) {
    constexpr std::u16string_view kForbidden(u"/\\\0", 3);
    const bool isName =
        !name.empty() && name.size() <= kLongestName && name[0] != u'.' && name.find_first_of(kForbidden) == name.npos;
    return isName || FailWith(kInvalidParameter);
}

}  // namespace

/// What is opened is what is looked at: between a look at the name and the use of it, it could be exchanged.
int OpenRuntimeFolder() {
    const std::u16string path = RuntimeFolder();
    if (path.empty() || !CreateUserFolder(path)) return -1;
    const int folder = open(ToNativePath(path).c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (folder < 0) {
        FailFromErrno();
        // The system's word for a link too.
        if (errno == ENOTDIR) SetLastErrorCode(kNotAFolder);
        return -1;
    }
    struct stat info {};
    if (fstat(folder, &info) == 0 && IsPrivate(info, S_IFDIR)) return folder;
    close(folder);
    SetLastErrorCode(kAccessDenied);
    return -1;
}

bool IsPrivateFile(int descriptor) {
    struct stat info {};
    return (fstat(descriptor, &info) == 0 && IsPrivate(info, S_IFREG)) || FailWith(kAccessDenied);
}

int OpenRuntimeFile(std::u16string_view name) {
    if (!IsFileName(name)) return -1;
    const int folder = OpenRuntimeFolder();
    if (folder < 0) return -1;
    constexpr int kFlags = O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    const int file = openat(folder, ToNarrow(name).c_str(), kFlags, S_IRUSR | S_IWUSR);
    if (file < 0) FailFromErrno();
    close(folder);
    if (file < 0 || IsPrivateFile(file)) return file;
    close(file);
    SetLastErrorCode(kAccessDenied);
    return -1;
}

void RemoveRuntimeFile(std::u16string_view name) {
    const int folder = IsFileName(name) ? OpenRuntimeFolder() : -1;
    if (folder < 0) return;
    unlinkat(folder, ToNarrow(name).c_str(), 0);
    close(folder);
}

}  // namespace connectdialog::platform
