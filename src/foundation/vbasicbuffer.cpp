#include "foundation/vbasicbuffer.h"

#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>

#include "foundation/securewipe.h"
#include "platform/lasterror.h"

namespace connectdialog {

VBasicBuffer::VBasicBuffer(std::uint64_t capacity)
    : data(static_cast<std::uint8_t*>(::operator new(capacity))), capacity(capacity) {}

VBasicBuffer::~VBasicBuffer() {
    FreeBlock();
}

void VBasicBuffer::FreeBlock() noexcept {
    if (sensitive) SecureWipe(data, capacity);
    ::operator delete(data);
}

void VBasicBuffer::SetDataLength(std::uint64_t length) {
    if (length > capacity) throw std::overflow_error("SetDataLength");
    dataLength = length;
}

std::uint8_t* VBasicBuffer::Append(const void* appended, std::uint64_t size, std::uint64_t extra) {
    const std::uint64_t available = capacity - dataLength;
    const bool fits = size <= available && (size != 0 || extra <= available);
    std::uint8_t* end = data + dataLength;
    if (!fits) {
        end = Grow(appended, size, extra);
        if (end == nullptr) return nullptr;
    } else if (appended != nullptr) {
        std::memmove(end, appended, size);
    }
    if (appended != nullptr) dataLength += size;
    return end;
}

std::uint8_t* VBasicBuffer::Grow(const void* appended, std::uint64_t size, std::uint64_t extra) {
    constexpr std::uint64_t kLargest = std::numeric_limits<std::int64_t>::max();
    const bool inBounds = size <= kLargest - dataLength && extra <= kLargest - dataLength - size;
    const std::uint64_t grown = inBounds ? dataLength + size + extra : 0;
    auto* block = inBounds ? static_cast<std::uint8_t*>(::operator new(grown, std::nothrow)) : nullptr;
    if (block == nullptr) {
        platform::SetLastErrorCode(platform::kNotEnoughMemory);
        return nullptr;
    }
    std::memcpy(block, data, dataLength);
    // Before the old block goes: the appended bytes may lie in it.
    if (appended != nullptr) std::memcpy(block + dataLength, appended, size);
    FreeBlock();
    data = block;
    capacity = grown;
    return data + dataLength;
}

}  // namespace connectdialog
