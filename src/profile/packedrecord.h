// Records of a published layout, packed field by field, little-endian.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>

#include "foundation/byteorder.h"

namespace connectdialog {

namespace detail {
/// A number as the unsigned one of its size.
template <class T>
using PackedBits = std::conditional_t<
    sizeof(T) == 8, std::uint64_t,
    std::conditional_t<sizeof(T) == 4, std::uint32_t, std::conditional_t<sizeof(T) == 2, std::uint16_t, std::uint8_t>>>;
}  // namespace detail

/// Writes one field behind the other. Requires: the record has room for all of them.
class RecordWriter {
  public:
    explicit RecordWriter(std::span<std::byte> record) : next(reinterpret_cast<std::uint8_t*>(record.data())) {}
    template <class T>
    void Put(T value) {
        StoreLittleEndian(std::bit_cast<detail::PackedBits<T>>(value), next);
        next += sizeof(T);
    }

  private:
    std::uint8_t* next;
};

/// Reads them in the same way.
class RecordReader {
  public:
    explicit RecordReader(std::span<const std::byte> record)
        : next(reinterpret_cast<const std::uint8_t*>(record.data())) {}
    template <class T>
    void Get(T& value) {
        value = std::bit_cast<T>(LoadLittleEndian<detail::PackedBits<T>>(next));
        next += sizeof(T);
    }

  private:
    const std::uint8_t* next;
};

}  // namespace connectdialog
