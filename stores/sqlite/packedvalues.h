// All values of a key in one row.
//
// Format, version 1: a byte with the version, then entries up to the end of the row in rising order of their ids:
//
//   varint   id of the value's name (table `names`) minus that of the entry before, at least 1
//   varint   size of the value in bytes * 8 + its tag
//   bytes    the value, as storedvalue.h tells
//
// A dword takes three bytes or four, and a row is decoded by one pass that copies nothing and allocates for the index
// only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "stores/common/storedvalue.h"

namespace connectdialog::stores {

/// Bytes of one row, at most; SQLite itself holds no more than 10^9.
constexpr std::size_t kMaxRowSize = std::size_t{512} << 20;

/// The values of one key: the row's bytes and an index over them. Changed values are appended to the bytes.
class PackedValues {
  public:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    /// Keeps the memory.
    void Clear();
    /// Bytes of values that there is room for.
    std::size_t GetCapacity() const { return bytes.capacity(); }
    /// Replaces the values with those of a row. On failure: false when the row is not of the format, and no values.
    bool Decode(std::string_view row);
    /// Replaces `row`.
    void Encode(std::string& row) const;

    std::size_t GetCount() const { return entries.size(); }
    /// The id of the name at an index below GetCount().
    std::uint32_t GetId(std::size_t index) const { return entries[index].id; }
    /// Lives until the next change.
    ValueView GetValue(std::size_t index) const;
    /// The largest id, 0 when there are no values.
    std::uint32_t GetLastId() const { return entries.empty() ? 0 : entries.back().id; }
    /// The index of the name's value, or kNone.
    std::size_t Find(std::uint32_t id) const;

    /// Gives false when the value was there already. Requires: `value` does not point into these values.
    bool Set(std::uint32_t id, const ValueView& value);
    void Remove(std::size_t index);
    bool HasRoomFor(std::size_t size) const { return liveSize + size <= kMaxRowSize; }

  private:
    struct Entry {
        std::uint32_t id;
        std::uint32_t offset;
        std::uint32_t size;
        ValueTag tag;
        std::uint8_t headSize;  ///< of the head that stands before the value in the bytes; 0 when none or a stale one
    };
    std::size_t LowerBound(std::uint32_t id) const;
    void Append(std::uint32_t id, const ValueView& value);
    void DropGarbage();

    std::string bytes;
    std::vector<Entry> entries;
    std::size_t liveSize = 0;  ///< of all values together; the rest of the bytes is heads and garbage
};

}  // namespace connectdialog::stores
