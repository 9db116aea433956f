// A file with its handle.
#pragma once

#include <cstddef>
#include <cstdint>

#include "foundation/vunicodestring.h"
#include "platform/files.h"

namespace connectdialog {

class VSecurityDescriptor;

/// Owns the handle and at most one view, and gives both back when it is closed or destroyed.
///
/// Belongs to one thread. Offsets and sizes count bytes. Every operation gives false when it fails, with the platform's
/// last error set as platform/files.h tells; nothing throws.
class VFile {
  public:
    VFile() = default;
    VFile(const VFile&) = delete;
    VFile& operator=(const VFile&) = delete;
    virtual ~VFile();

    /// Opens `name`, with the share mode and the attributes as set before; `access` and `disposition` are values of
    /// platform::FileAccess and platform::FileDisposition. A file that is open is closed first, also when this fails.
    /// The name is kept on success. On success the last error tells whether the file existed (183).
    virtual bool Open(const VUnicodeString& name, std::uint32_t access, std::uint32_t disposition);
    /// The file ends at the position.
    virtual bool SetEndOfFile();
    virtual bool Seek(std::int64_t offset, platform::SeekOrigin origin);
    virtual bool GetPosition(std::uint64_t& position);

    /// Before opening. Not shared and platform::kFileAttributeNormal at first.
    void SetShareMode(std::uint32_t mode) { shareMode = mode; }
    void SetAttributes(std::uint32_t flagsAndAttributes) { attributes = flagsAndAttributes; }

    /// Before opening: who may open the file later, when it is made (see GetFilePermissions). Null, as at first: this
    /// user alone. Requires: the descriptor lives until the file is opened.
    void SetSecurityDescriptor(const VSecurityDescriptor* descriptor) { securityDescriptor = descriptor; }

    bool IsOpen() const { return handle != platform::kInvalidFile; }
    /// The name of the file that was opened last.
    const VUnicodeString& GetName() const { return fileName; }

    /// Up to `size` bytes at the position, or at an offset; `done` is fewer only at the end of the file.
    bool Read(void* data, std::size_t size, std::size_t& done);
    bool ReadAt(std::uint64_t offset, void* data, std::size_t size, std::size_t& done);
    /// All bytes at the position, or at an offset.
    bool Write(const void* data, std::size_t size);
    bool WriteAt(std::uint64_t offset, const void* data, std::size_t size);

    /// Keeps other processes and other handles from locking the range; waits until they have unlocked it.
    bool LockRange(std::uint64_t offset, std::uint64_t length, bool exclusive);
    bool UnlockRange(std::uint64_t offset, std::uint64_t length);

    /// The whole file as memory, valid until Close; maps it at the first call and gives the same view later.
    /// On failure: null, also for an empty file.
    void* MapView(bool writable);
    /// The size of the view; 0 when there is none.
    std::size_t GetViewSize() const { return viewSize; }

    /// Unmaps the view and closes the handle. On failure: false, when what was written could not be put away.
    bool Close();

  private:
    platform::FileHandle handle = platform::kInvalidFile;
    VUnicodeString fileName;
    std::uint32_t shareMode = platform::kShareNone;
    std::uint32_t attributes = platform::kFileAttributeNormal;
    const VSecurityDescriptor* securityDescriptor = nullptr;
    void* view = nullptr;
    std::size_t viewSize = 0;
};

}  // namespace connectdialog
