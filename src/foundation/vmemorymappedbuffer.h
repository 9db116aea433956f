// The buffer in memory that another process sees too.
#pragma once

#include <cstdint>
#include <string_view>

#include "foundation/ibuffer.h"
#include "foundation/vipclock.h"
#include "foundation/vunicodestring.h"
#include "platform/sharedmemory.h"

namespace connectdialog {

/// What a block in shared memory does beyond a buffer; VMemoryMappedBuffer::Interface.
class IMemoryMappedBuffer {
  public:
    /// Makes a block of `size` bytes of zeros, or takes the one that another has open under the name; with
    /// platform::kExistingSize only the latter, in the size that it has. What this object had open is closed first.
    /// Runs under the lock. On success the last error tells whether the block existed: 183, or 0. On failure: false
    /// with the last error set as platform::OpenSharedMemory tells; the capacity is 0.
    virtual bool Create(std::uint64_t size) = 0;
    /// Gives the block up; the last one that does so ends it. The capacity is 0 afterwards.
    virtual void Close() = 0;
    /// The lock that guards the block between processes: to be held while its bytes are written or read, and never
    /// while waiting for the other side. Owned by the buffer, and the same as long as that lives; null before the first
    /// Create that could make it.
    virtual ISynchObject* GetLock() = 0;

  protected:
    ~IMemoryMappedBuffer() = default;
};

/// Hands data to another running instance. One side creates the block with the size that the other needs and tells it
/// so; the other attaches, appends, and tells how many bytes it wrote; the first sets its data length to that. The
/// length in use is each object's own and is not shared.
///
/// What another process wrote is input from outside, and may change while the lock is not held. When another process
/// cuts the memory short, the addresses become null and the capacity 0 at the next call; see platform/sharedmemory.h.
class VMemoryMappedBuffer : public VUnknown<IBuffer>, public IMemoryMappedBuffer {
  public:
    using Interface = IMemoryMappedBuffer;

    /// The name by which all instances know the block.
    static constexpr std::u16string_view kSharedName = u"5FA01C43-3B48-476A-ACC7-D86059F335B0";

    /// Nothing is open at first. `name` is that of the block, as platform::OpenNamedLock takes names.
    explicit VMemoryMappedBuffer(std::u16string_view name = kSharedName) : name(name) {}
    VMemoryMappedBuffer(const VMemoryMappedBuffer&) = delete;
    VMemoryMappedBuffer& operator=(const VMemoryMappedBuffer&) = delete;
    ~VMemoryMappedBuffer() override;

    bool Create(std::uint64_t size) override;
    void Close() override;
    ISynchObject* GetLock() override { return lock.Get(); }

    const std::uint8_t* GetData() const override { return View(); }
    std::uint8_t* GetData() override { return View(); }
    std::uint64_t GetCapacity() const override { return View() != nullptr ? capacity : 0; }
    std::uint64_t GetDataLength() const override { return dataLength; }
    void SetDataLength(std::uint64_t length) override;
    /// Never grows. Null with the last error 122 when the bytes do not fit, and null when nothing is open.
    std::uint8_t* Append(const void* appended, std::uint64_t size, std::uint64_t extra) override;
    void Destroy() override { delete this; }

  private:
    std::uint8_t* View() const;
    bool MakeLock();

    VUnicodeString name;
    platform::SharedMemory memory;
    VRef<VIpcLock> lock;
    std::uint64_t capacity = 0;
    std::uint64_t dataLength = 0;
};

}  // namespace connectdialog
