// Numbers in the byte order of a record, whatever the processor's own is.
#pragma once

#include <cstddef>
#include <cstdint>

namespace connectdialog {

/// Reads an unsigned number of sizeof(T) bytes. Requires: that many bytes stand at `bytes`.
template <class T>
T LoadBigEndian(const std::uint8_t* bytes) {
    T value = 0;
    for (std::size_t i = 0; i < sizeof(T); ++i) value = static_cast<T>(value << 8 | bytes[i]);
    return value;
}
template <class T>
T LoadLittleEndian(const std::uint8_t* bytes) {
    T value = 0;
    for (std::size_t i = sizeof(T); i > 0; --i) value = static_cast<T>(value << 8 | bytes[i - 1]);
    return value;
}

/// Writes sizeof(T) bytes. Requires: there is room for them.
template <class T>
void StoreBigEndian(T value, std::uint8_t* bytes) {
    for (std::size_t i = sizeof(T); i > 0; --i, value = static_cast<T>(value >> 8)) {
        bytes[i - 1] = static_cast<std::uint8_t>(value);
    }
}
template <class T>
void StoreLittleEndian(T value, std::uint8_t* bytes) {
    for (std::size_t i = 0; i < sizeof(T); ++i, value = static_cast<T>(value >> 8)) {
        bytes[i] = static_cast<std::uint8_t>(value);
    }
}

}  // namespace connectdialog
