// The files that hold the settings of the machine and of the user beside the profile store.
//
// A hive is one text file in the form of a registry export. The machine's belongs to the administrator, who writes
// policies with an editor; the user's is written by the library. What is in a file is read and written by
// foundation/vsettingshive.h; here stands where the files are and how a file is replaced so that
//  - a kill or a power loss at any moment leaves the old file or the new one, whole;
//  - two processes that change a hive at once lose nothing, as long as each reads, changes and replaces under the lock.
//
// Paths are names joined by `\`. A link in the place of a hive is followed, and what it leads to is replaced; one
// that leads nowhere fails with 1921 when it is to be written. The
// user's file is readable by the user alone (0600, in folders made 0700), the machine's by everybody (0644 and 0755).
// Every function that fails sets the last error.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace connectdialog::platform {

enum class HiveScope { kMachine, kUser };

/// The file of a hive. It need not exist. Empty when the system tells no folder for it.
std::u16string GetHivePath(HiveScope scope);

/// Names one state of a file: another one after each replacement, and after a change in place by an editor (unless that
/// comes within the clock's step and keeps the size).
using HiveStamp = std::array<std::uint64_t, 6>;

/// On failure: false (2 or 3 when there is no file), and `stamp` stays.
bool GetHiveStamp(std::u16string_view path, HiveStamp& stamp);

/// Reads a whole file, and the stamp that belongs to what was read.
/// On failure: false, and the outputs stay: 2 or 3 when there is no file, 223 above `limit` bytes, 13 for what is no
/// plain file (a pipe is not waited for).
bool ReadHiveFile(std::u16string_view path, std::size_t limit, std::string& bytes, HiveStamp& stamp);

/// Whether this user may put a file in the place of the hive, in a folder that is there or can be made.
/// On failure: false, as HiveLock and its Replace would fail (5, 19, 1921...). Nothing is written.
bool CanReplaceHive(std::u16string_view path);

/// Keeps other writers, in this process and others, away from a hive while it exists. The lock is the system's own on a
/// file beside the hive (`user.reg.lock`), so that the death of its holder ends it.
class HiveLock {
  public:
    /// Makes the hive's folder when it is missing, and waits up to 5 seconds for another holder.
    /// On failure: IsHeld gives false, and the last error tells why (33 when the wait was in vain).
    HiveLock(HiveScope scope, std::u16string_view path);
    HiveLock(const HiveLock&) = delete;
    HiveLock& operator=(const HiveLock&) = delete;
    ~HiveLock();

    bool IsHeld() const { return descriptor >= 0; }
    /// Puts a new file with these bytes in the place of the hive: written beside it, made durable, then renamed.
    /// Requires: IsHeld. On failure: false, and the old file stands, unless only the last step failed, which makes the
    /// new name durable.
    bool Replace(std::string_view bytes);

  private:
    std::string target;
    HiveScope scope;
    int descriptor = -1;
};

}  // namespace connectdialog::platform
