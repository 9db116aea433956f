#include "platform/userfiles.h"

#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/lasterror.h"
#include "platform/paths.h"
#include "platform/posix/nativefile.h"

namespace connectdialog::platform {

bool CreateUserFolder(std::u16string_view path) {
    return MakeFolders(ToNativePath(path), S_IRWXU);
}

bool CanMakeFilesIn(std::u16string_view folder) {
    std::string name = ToNativePath(folder) + "/.probe-XXXXXX";
    const int file = mkostemp(name.data(), O_CLOEXEC);
    if (file < 0) return FailFromErrno();
    close(file);
    unlink(name.c_str());
    return true;
}

bool IsPrivateFolder(std::u16string_view path) {
    struct stat status {};
    if (lstat(ToNativePath(path).c_str(), &status) != 0) return FailFromErrno();
    if (!S_ISDIR(status.st_mode)) return FailWith(kNotAFolder);
    const bool isPrivate = status.st_uid == geteuid() && (status.st_mode & (S_IRWXG | S_IRWXO)) == 0;
    return isPrivate || FailWith(kAccessDenied);
}

}  // namespace connectdialog::platform
