// Counts what a benchmark program allocates. Included by one source file of a program: it replaces operator new.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>

namespace connectdialog::bench {

inline std::atomic<std::uint64_t> allocations{0};

inline void* CountedAllocation(std::size_t size, std::size_t alignment) {
    allocations.fetch_add(1, std::memory_order_relaxed);
    const std::size_t rounded = (size + alignment - 1) / alignment * alignment;
    void* block = alignment > alignof(std::max_align_t) ? std::aligned_alloc(alignment, rounded) : std::malloc(size);
    if (block == nullptr) throw std::bad_alloc();
    return block;
}

}  // namespace connectdialog::bench

void* operator new(std::size_t size) {
    return connectdialog::bench::CountedAllocation(size, 1);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
    return connectdialog::bench::CountedAllocation(size, static_cast<std::size_t>(alignment));
}
void operator delete(void* block) noexcept {
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}
void operator delete(void* block, std::align_val_t) noexcept {
    std::free(block);
}
void operator delete(void* block, std::size_t, std::align_val_t) noexcept {
    std::free(block);
}
