// The byte container that crosses interfaces: drag data, clipboard data, hidden texts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "foundation/vunknown.h"

namespace connectdialog {

/// Bytes in one block of memory, of which the first GetDataLength() are in use. Sizes count bytes.
///
/// Reference-counted: a creator holds the first reference. An address that the buffer gives is valid until the next
/// Append. Implementations: VBasicBuffer on the heap, VMemoryMappedBuffer in memory shared with another process.
class IBuffer : public IUnknownBase {
  public:
    /// The first byte; null at most while the capacity is 0.
    virtual const std::uint8_t* GetData() const = 0;
    virtual std::uint8_t* GetData() = 0;
    virtual std::uint64_t GetCapacity() const = 0;
    virtual std::uint64_t GetDataLength() const = 0;
    /// Declares how many bytes are in use; the bytes themselves stay as they are.
    /// On failure: throws std::overflow_error("SetDataLength") when `length` is above the capacity.
    virtual void SetDataLength(std::uint64_t length) = 0;

    /// Appends `size` bytes and gives the address where they stand now. `extra` is what the caller expects to append
    /// soon: an implementation that grows makes room for it too. A null `data` only makes the room and leaves the
    /// length as it is. `data` may lie in this buffer. On failure: null with the last error set (8 no memory, 122 no
    /// room in a buffer that cannot grow); nothing changed.
    virtual std::uint8_t* Append(const void* data, std::uint64_t size, std::uint64_t extra) = 0;

    /// `count` characters, two bytes each, as they lie in memory.
    virtual std::uint8_t* AppendWide(const char16_t* text, std::uint64_t count) {
        return Append(text, count * sizeof(char16_t), 0);
    }
    virtual std::uint8_t* AppendBytes(const void* data, std::uint64_t size, std::uint64_t extra) {
        return Append(data, size, extra);
    }
    /// A zero-terminated text without its terminator; null appends nothing.
    virtual std::uint8_t* AppendString(const char* text) {
        return Append(text, text != nullptr ? std::strlen(text) : 0, 0);
    }

  protected:
    ~IBuffer() override = default;
};

}  // namespace connectdialog
