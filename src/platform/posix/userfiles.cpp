#include "platform/userfiles.h"

#include <sys/stat.h>
#include <unistd.h>

#include "platform/lasterror.h"
#include "platform/paths.h"
#include "platform/posix/nativefile.h"

namespace connectdialog::platform {

bool CreateUserFolder(std::u16string_view path) {
    return MakeFolders(ToNativePath(path), S_IRWXU);
}

bool IsPrivateFolder(std::u16string_view path) {
    struct stat status {};
    if (lstat(ToNativePath(path).c_str(), &status) != 0) return FailFromErrno();
    if (!S_ISDIR(status.st_mode)) return FailWith(kNotAFolder);
    const bool isPrivate = status.st_uid == geteuid() && (status.st_mode & (S_IRWXG | S_IRWXO)) == 0;
    return isPrivate || FailWith(kAccessDenied);
}

}  // namespace connectdialog::platform
