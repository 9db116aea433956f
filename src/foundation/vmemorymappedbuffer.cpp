#include "foundation/vmemorymappedbuffer.h"

#include <cstring>
#include <stdexcept>
#include <utility>

#include "platform/lasterror.h"

namespace connectdialog {

VMemoryMappedBuffer::~VMemoryMappedBuffer() {
    platform::CloseSharedMemory(name, memory);
}

bool VMemoryMappedBuffer::Create(std::uint64_t size) {
    Close();
    if (!MakeLock()) return false;
    const VSynchGuard guard(*lock);
    if (const std::uint32_t error = lock->GetStatus().GetCode()) return platform::FailWith(error);
    if (!platform::OpenSharedMemory(name, size, memory)) return false;
    capacity = size == platform::kExistingSize ? memory.size : size;
    return true;
}

/// Once: a caller may hold the one that was given out.
bool VMemoryMappedBuffer::MakeLock() {
    if (lock) return true;
    auto made = VRef<VIpcLock>::Adopt(new VIpcLock(name + u".lock"));
    if (!made->IsCreated()) return platform::FailWith(made->GetStatus().GetCode());
    lock = std::move(made);
    return true;
}

void VMemoryMappedBuffer::Close() {
    platform::CloseSharedMemory(name, memory);
    capacity = 0;
    dataLength = 0;
}

std::uint8_t* VMemoryMappedBuffer::View() const {
    const bool isUsable = memory.view != nullptr && platform::IsSharedMemoryIntact(memory);
    return isUsable ? static_cast<std::uint8_t*>(memory.view) : nullptr;
}

void VMemoryMappedBuffer::SetDataLength(std::uint64_t length) {
    if (length > GetCapacity()) throw std::overflow_error("SetDataLength");
    dataLength = length;
}

std::uint8_t* VMemoryMappedBuffer::Append(const void* appended, std::uint64_t size, std::uint64_t extra) {
    std::uint8_t* const view = View();
    if (view == nullptr) return nullptr;
    const std::uint64_t available = capacity - dataLength;
    if (size > available || (size == 0 && extra > available)) {
        platform::SetLastErrorCode(platform::kInsufficientBuffer);
        return nullptr;
    }
    std::uint8_t* const end = view + dataLength;
    if (appended == nullptr) return end;
    std::memmove(end, appended, size);
    dataLength += size;
    return end;
}

}  // namespace connectdialog
