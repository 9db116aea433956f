// Steps of work on files that several services here share. Paths are native. Functions that fail set the last error.
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace connectdialog::platform {

/// Closes the descriptor when it goes out of scope.
class OwnedDescriptor {
  public:
    explicit OwnedDescriptor(int descriptor) : number(descriptor) {}
    OwnedDescriptor(const OwnedDescriptor&) = delete;
    OwnedDescriptor& operator=(const OwnedDescriptor&) = delete;
    ~OwnedDescriptor() {
        if (number >= 0) close(number);
    }
    const int number;
};

/// The path without its last name: `.` or `/` at the least.
std::string FolderOf(const std::string& path);

/// Makes the folder and those above it that are missing. One with rights for others has them whatever the user's mask
/// says; one that is there already stays as it is. On failure: as CreateUserFolder.
bool MakeFolders(const std::string& path, mode_t mode);

/// Makes the names in the folder durable.
bool SyncFolder(const std::string& folder);

/// Where the file itself stands when the path is a link; any other path as it is.
/// On failure: the empty string; 1921 when the link leads nowhere.
std::string ResolveLink(const std::string& path);

/// Reads a whole file, and the state of it that was read. A pipe is not waited for.
/// On failure: the outputs stay; 2 or 3 when there is no file, 13 for what is no regular file, 223 above `limit` bytes.
bool ReadPlainFile(const std::string& path, std::size_t limit, std::string& bytes, struct stat& state);

/// The way of platform/files.h ReplaceFileWith, for a path that is no link, with the rights of the new file.
bool ReplaceContent(const std::string& path, std::string_view bytes, mode_t mode);

/// Takes the kernel's exclusive lock on an open file. Waits for another holder so long, or for ever without a limit.
/// On failure: 33 when the wait was in vain.
bool LockExclusively(int descriptor, std::optional<std::chrono::milliseconds> wait);

}  // namespace connectdialog::platform
