#include "platform/userfiles.h"

#include <cerrno>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/lasterror.h"
#include "platform/paths.h"

namespace connectdialog::platform {

namespace {

bool IsFolder(const std::string& nativePath) {
    struct stat status {};
    if (stat(nativePath.c_str(), &status) != 0) return FailFromErrno();
    return S_ISDIR(status.st_mode) || FailWith(kNotAFolder);
}

bool MakeFolder(const std::string& nativePath) {
    if (mkdir(nativePath.c_str(), S_IRWXU) == 0) return true;
    // A folder above a home may refuse the attempt in other ways than by saying that it is there.
    const int error = errno;
    if (IsFolder(nativePath)) return true;
    return error == EEXIST ? FailWith(kNotAFolder) : FailWith(ErrorFromErrno(error));
}

}  // namespace

bool CreateUserFolder(std::u16string_view path) {
    const std::string nativePath = ToNativePath(path);
    if (nativePath.empty()) return FailWith(kPathNotFound);
    for (std::size_t end = nativePath.find('/', 1); end != nativePath.npos; end = nativePath.find('/', end + 1)) {
        if (!MakeFolder(nativePath.substr(0, end))) return false;
    }
    return MakeFolder(nativePath);
}

bool IsPrivateFolder(std::u16string_view path) {
    struct stat status {};
    if (lstat(ToNativePath(path).c_str(), &status) != 0) return FailFromErrno();
    if (!S_ISDIR(status.st_mode)) return FailWith(kNotAFolder);
    const bool isPrivate = status.st_uid == geteuid() && (status.st_mode & (S_IRWXG | S_IRWXO)) == 0;
    return isPrivate || FailWith(kAccessDenied);
}

}  // namespace connectdialog::platform
