// Files: opening, reading and writing, locks on ranges, and views.
//
// A file is known by a handle, which belongs to who opened it and is closed exactly once. Offsets and sizes count
// bytes. Paths are joined by `\` and become native here. Only regular files are opened: a folder, a pipe or a device
// fails with 5, since a pipe or a device could keep its reader waiting for ever.
//
// New files belong to the user alone (0600) unless the opening says otherwise, and no handle is inherited by another
// program.
//
// Share modes are kept between those who open files by this service; other programs neither see nor respect them. Mode
// 0 admits nobody else while the handle is open, not even in the same process; any other mode admits everybody whose
// own mode is not 0. So two modes that differ only in what they admit (reading, writing) count as one: what needs finer
// order locks ranges. A file system without locks has no share modes either. Data base files are never opened through
// this service: closing one of its handles could drop the locks of the data base.
//
// Every function that fails gives false (or kInvalidFile, or null) with the last error set: 2 or 3 no such file or
// folder, 5 not allowed or no regular file, 6 no valid handle, 32 refused by a share mode, 33 refused by a lock, 80 the
// file exists, 87 an argument that makes no sense, 112 disk full, 223 above the limit of the file system or process.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace connectdialog::platform {

using FileHandle = std::intptr_t;
inline constexpr FileHandle kInvalidFile = -1;

/// What may be done with the handle; values may be combined. Appending alone writes at the end of the file, wherever
/// the position stands.
enum FileAccess : std::uint32_t {
    kFileReadData = 1,
    kFileWriteData = 2,
    kFileAppendData = 4,
    kGenericRead = 0x80000000,
    kGenericWrite = 0x40000000
};

/// What is to be there before and after.
enum FileDisposition : std::uint32_t {
    kCreateNew = 1,         ///< fails with 80 when there is such a file
    kCreateAlways = 2,      ///< an old file is emptied
    kOpenExisting = 3,      ///< fails with 2 when there is none
    kOpenAlways = 4,        ///< made when there is none
    kTruncateExisting = 5,  ///< emptied; fails with 2 when there is none
};

enum FileShare : std::uint32_t { kShareNone = 0, kShareRead = 1, kShareWrite = 2, kShareDelete = 4 };

/// Attributes and flags; what is not listed here has no effect.
enum FileAttributes : std::uint32_t {
    kFileAttributeNormal = 0x80,
    /// Takes only a file of the user's own, and never follows a link that stands in its place: for files with a name
    /// that others can guess in a folder that others can write to. Fails with 5, or 1921 for a link.
    kFileFlagOwnOnly = 0x00200000
};

/// Who may open a file later: three bits for the user, three for the user's group and three for others, of which 4 lets
/// read and 2 lets write.
enum FilePermissions : std::uint32_t { kOwnerReadsAndWrites = 0600, kAllReadAndWrite = 0666 };

struct FileOpening {
    std::uint32_t access = 0;
    std::uint32_t disposition = kOpenExisting;
    std::uint32_t share = kShareNone;
    std::uint32_t attributes = kFileAttributeNormal;
    /// Of a new file, less what the user's mask takes away. An old file keeps its own.
    std::uint32_t permissions = kOwnerReadsAndWrites;
};

/// Opens a file. An old file is emptied only when its share mode has admitted us. On success the last error tells for
/// kCreateAlways and kOpenAlways whether there was a file: 183, or 0 when it was made; otherwise it is 0.
FileHandle OpenFile(std::u16string_view path, const FileOpening& opening);
bool CloseFile(FileHandle file);

/// Reads up to `size` bytes from the position, which moves on. Fewer, or none, only at the end of the file.
bool ReadFromFile(FileHandle file, void* data, std::size_t size, std::size_t& done);
/// The same at an offset; the position stays.
bool ReadFromFileAt(FileHandle file, std::uint64_t offset, void* data, std::size_t size, std::size_t& done);

/// Writes all bytes at the position, which moves on. On failure: part of them may have been written.
bool WriteToFile(FileHandle file, const void* data, std::size_t size);
/// The same at an offset; the position stays.
bool WriteToFileAt(FileHandle file, std::uint64_t offset, const void* data, std::size_t size);

/// Puts a file with these bytes, for this user alone, in the place of the one at `path`: written beside it under a name
/// that begins with `.new-`, made durable, then renamed. A kill or a failure leaves the old file whole. A link is
/// followed, and stays. Share modes do not count.
/// On failure: false, and the old file stands, unless only the last step failed, which makes the new name durable; 5
/// when `path` is that of something else than a file, 1921 for a link that leads nowhere.
bool ReplaceFileWith(std::u16string_view path, std::string_view bytes);

enum class SeekOrigin : std::uint32_t { kBegin = 0, kCurrent = 1, kEnd = 2 };

/// Moves the position, also behind the end of the file; `position` gets the new one. Before the start fails with 87.
bool SeekInFile(FileHandle file, std::int64_t offset, SeekOrigin origin, std::uint64_t& position);
/// The file ends at the position: cut, or filled up with zeros.
bool EndFileHere(FileHandle file);
bool GetFileSize(FileHandle file, std::uint64_t& size);

enum class LockMode { kShared, kExclusive };

/// Locks a range, also beyond the end of the file, against every other handle that locks: of this process or another.
/// The handle's own locks give way to the new one. An exclusive lock needs a handle that writes (5 otherwise); a shared
/// one on a handle that cannot read becomes exclusive. A length of 0 locks nothing. Locks do not hinder reading and
/// writing. With `wait`, waits without a limit for others to unlock; without, fails with 33. The handle's end, which
/// the end of its process includes, unlocks everything.
bool LockFileRange(FileHandle file, std::uint64_t offset, std::uint64_t length, LockMode mode, bool wait);
/// Unlocks a range; one that is not locked is no failure.
bool UnlockFileRange(FileHandle file, std::uint64_t offset, std::uint64_t length);

/// The first `size` bytes of the file as memory, for reading, or for reading and writing when `writable` and the handle
/// can do both. The view stays when the handle is closed; who made it unmaps it. Touching what another process has cut
/// off in the meantime ends this process: views are for files that only the library changes.
/// On failure: null; with 87 when `size` is 0 or the file is shorter.
void* MapFile(FileHandle file, std::size_t size, bool writable);
/// Null does nothing.
void UnmapFile(void* view, std::size_t size);

}  // namespace connectdialog::platform
