// The growable buffer on the heap.
#pragma once

#include <cstdint>

#include "foundation/ibuffer.h"

namespace connectdialog {

/// Grows to exactly what an append and its `extra` need: there is no doubling, the caller's `extra` is the only
/// look-ahead. A sensitive buffer zeroes its block before it frees it, at growth and at the end.
class VBasicBuffer : public VUnknown<IBuffer> {
  public:
    /// Allocates `capacity` bytes, which may be 0. Throws std::bad_alloc.
    explicit VBasicBuffer(std::uint64_t capacity);
    VBasicBuffer(const VBasicBuffer&) = delete;
    VBasicBuffer& operator=(const VBasicBuffer&) = delete;
    ~VBasicBuffer() override;

    const std::uint8_t* GetData() const override { return data; }
    std::uint8_t* GetData() override { return data; }
    std::uint64_t GetCapacity() const override { return capacity; }
    std::uint64_t GetDataLength() const override { return dataLength; }
    void SetDataLength(std::uint64_t length) override;
    std::uint8_t* Append(const void* appended, std::uint64_t size, std::uint64_t extra) override;

    /// Not sensitive at first.
    bool IsSensitive() const { return sensitive; }
    void SetSensitive(bool isSensitive) { sensitive = isSensitive; }

  private:
    std::uint8_t* Grow(const void* appended, std::uint64_t size, std::uint64_t extra);
    void FreeBlock() noexcept;

    std::uint8_t* data;
    std::uint64_t capacity;
    std::uint64_t dataLength = 0;
    bool sensitive = false;
};

}  // namespace connectdialog
