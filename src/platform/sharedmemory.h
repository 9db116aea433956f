// Memory that processes of one user share by a name.
//
// It is a file of that name in the run-time folder of platform/filelock.h, under the same rules: a link, a file of
// another user or one that is open to others is refused (5, 1921). Its content lives as long as somebody has it open:
// what a process that ended without closing has left behind is never seen again, and the last one to close removes it.
//
// Another process of the user can cut the file short while it is mapped, and memory that is gone ends who touches it.
// So IsSharedMemoryIntact is asked before each use; that does not help against one who cuts it in between, which no one
// but a process of the same user can.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/files.h"

namespace connectdialog::platform {

/// The size that attaches to memory that others have made, whatever its size.
inline constexpr std::uint64_t kExistingSize = ~std::uint64_t{0};
inline constexpr std::uint64_t kLargestSharedMemory = std::uint64_t{256} << 20;

struct SharedMemory {
    FileHandle mapping = kInvalidFile;
    void* view = nullptr;
    std::uint64_t size = 0;  ///< of the view
    bool existed = false;    ///< others had it open before
};

/// Makes `size` bytes of zeros known by `name` (a name as OpenNamedLock takes it), or attaches to what others have
/// open. Two that do this at once must exclude each other by a lock. On success the last error is 183 or 0, by
/// `existed`.
/// On failure: false, and `memory` stays: 87 for a size of 0 or above kLargestSharedMemory, 122 when what exists is
/// smaller than `size`, 2 when nothing exists to attach to, 112 when the system has no room.
bool OpenSharedMemory(std::u16string_view name, std::uint64_t size, SharedMemory& memory);
/// Whether the memory can still be touched in its whole size. On failure: false with 5 or 87.
bool IsSharedMemoryIntact(const SharedMemory& memory);
/// Takes the name from what others have open: they keep that, and the next one to make memory under the name gets its
/// own. Requires the lock that OpenSharedMemory asks for.
void ForgetSharedMemory(std::u16string_view name);
/// Unmaps and closes; `memory` is empty afterwards. The last one to close it removes the file.
void CloseSharedMemory(std::u16string_view name, SharedMemory& memory);

}  // namespace connectdialog::platform
