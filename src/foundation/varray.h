// A growing array with range errors.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

namespace connectdialog {

/// Whether an element may be moved to another place as bytes, with nothing to end at the old one. True of handles that
/// hold one pointer and know nothing of their own address.
template <class T>
inline constexpr bool kMovesAsBytes = std::is_trivially_copyable_v<T>;

/// Elements in one block of memory. Sizes and indices count elements.
///
/// Two growth rules stand side by side: adding one element (and a constructor with a capacity) grows to
/// max(capacity, needed) * factor + increment, inserting a run grows to max(capacity * factor + increment, needed).
/// On failure: index access at or above the count throws VArray<T>::OutOfRange.
template <class T>
class VArray {
  public:
    /// Thrown by index access. Each instantiation has its own type.
    class OutOfRange {};

    VArray() = default;
    /// Really holds capacity * 2 elements, by the growth rule; 0 allocates nothing.
    explicit VArray(std::uint64_t initialCapacity) {
        if (initialCapacity != 0) Relocate(GrownForOne(initialCapacity));
    }
    VArray(const VArray& other) { InsertRun(0, other.elements, other.count); }
    VArray(VArray&& other) noexcept { Swap(other); }
    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): what is swapped in is a copy
    VArray& operator=(const VArray& other) {
        VArray copy(other);
        Swap(copy);
        return *this;
    }
    VArray& operator=(VArray&& other) noexcept {
        VArray taken(std::move(other));
        Swap(taken);
        return *this;
    }
    ~VArray() {
        Clear();
        Free(elements);
    }

    std::uint64_t GetCount() const { return count; }
    std::uint64_t GetCapacity() const { return capacity; }
    bool IsEmpty() const { return count == 0; }
    T* GetData() { return elements; }
    const T* GetData() const { return elements; }
    T& operator[](std::uint64_t index) { return elements[Checked(index)]; }
    const T& operator[](std::uint64_t index) const { return elements[Checked(index)]; }
    T* begin() { return elements; }
    T* end() { return elements + count; }
    const T* begin() const { return elements; }
    const T* end() const { return elements + count; }

    /// Adds one element at the end. `value` may be an element of this array.
    T& Add(T value) {
        if (count + 1 > capacity) Relocate(GrownForOne(count + 1));
        T* place = std::construct_at(elements + count, std::move(value));
        ++count;
        return *place;
    }
    /// Inserts before `index`, which may be the count; above it, throws OutOfRange.
    void Insert(std::uint64_t index, T value) {
        if (index > count) throw OutOfRange();
        Add(std::move(value));
        std::rotate(begin() + index, end() - 1, end());
    }
    /// Inserts copies of `length` elements before `index`. Requires: `values` does not lie in this array.
    void InsertRun(std::uint64_t index, const T* values, std::uint64_t length) {
        if (index > count) throw OutOfRange();
        if (count + length > capacity) Relocate(std::max(capacity * factor + increment, count + length));
        for (std::uint64_t i = 0; i < length; ++i) {
            std::construct_at(elements + count, values[i]);
            ++count;
        }
        std::rotate(begin() + index, end() - length, end());
    }
    /// Throws OutOfRange when there is no such element.
    void RemoveAt(std::uint64_t index) {
        Checked(index);
        std::move(begin() + index + 1, end(), begin() + index);
        std::destroy_at(elements + --count);
    }
    /// Ends every element; the block is kept.
    void Clear() {
        std::destroy(begin(), end());
        count = 0;
    }
    void Swap(VArray& other) noexcept {
        std::swap(capacity, other.capacity);
        std::swap(count, other.count);
        std::swap(elements, other.elements);
        std::swap(factor, other.factor);
        std::swap(increment, other.increment);
    }

  private:
    std::uint64_t Checked(std::uint64_t index) const {
        if (index >= count) throw OutOfRange();
        return index;
    }
    std::uint64_t GrownForOne(std::uint64_t needed) const { return std::max(capacity, needed) * factor + increment; }
    static void Free(T* block) { ::operator delete(block, std::align_val_t(alignof(T))); }
    void Relocate(std::uint64_t newCapacity) {
        // NOLINTBEGIN(bugprone-sizeof-expression): an element may be a pointer
        T* block = static_cast<T*>(::operator new(newCapacity * sizeof(T), std::align_val_t(alignof(T))));
        if constexpr (kMovesAsBytes<T>) {
            // NOLINTNEXTLINE(bugprone-undefined-memory-manipulation): that is what kMovesAsBytes says
            if (count != 0) std::memcpy(static_cast<void*>(block), elements, count * sizeof(T));
            // NOLINTEND(bugprone-sizeof-expression)
        } else {
            std::uninitialized_move(begin(), end(), block);
            std::destroy(begin(), end());
        }
        Free(elements);
        elements = block;
        capacity = newCapacity;
    }

    std::uint64_t capacity = 0;
    std::uint64_t count = 0;
    T* elements = nullptr;
    std::uint64_t factor = 2;
    std::uint64_t increment = 0;
};

}  // namespace connectdialog
