// How a value is kept: a tag and bytes, the same in every provider.
//
//   dword    0 to 4 bytes, little-endian, without leading zero bytes
//   text     one byte a code unit when all are below 256
//   wide     two bytes a code unit, little-endian, otherwise
//   binary   the bytes as they are
//   strings  for each string a varint of (code units * 2 + wide), then its code units as above
//
// Texts keep every code unit, lone surrogates too. A varint has seven bits a byte, low bits first, and the high bit set
// on all bytes but the last.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace connectdialog {

class VStringArray;
class VUnicodeString;

namespace stores {

enum class ValueTag : std::uint8_t { kDword = 1, kText = 2, kWideText = 3, kBinary = 4, kStrings = 5 };

/// Bytes of one value, at most.
constexpr std::size_t kMaxValueSize = std::size_t{64} << 20;

/// A value where it lies. It refers to the bytes: they live until the key is next written or read afresh.
struct ValueView {
    ValueTag tag = ValueTag::kBinary;
    std::string_view bytes;
};

// Each encoder replaces `bytes` and gives a view of it.

ValueView EncodeDword(std::uint32_t value, std::string& bytes);
ValueView EncodeText(std::u16string_view text, std::string& bytes);
ValueView EncodeStrings(const VStringArray& strings, std::string& bytes);

// Each decoder gives 0, or 1629 for a value of another type, or 1015 for bytes that no encoder made; the output stays
// as it was then.

std::uint32_t DecodeDword(const ValueView& value, std::uint32_t& number);
std::uint32_t DecodeText(const ValueView& value, VUnicodeString& text);
std::uint32_t DecodeStrings(const ValueView& value, VStringArray& strings);

inline constexpr std::size_t kMaxVarintSize = 5;
/// Writes at `to`, which has room for kMaxVarintSize bytes, and gives the place behind.
inline char* WriteVarint(std::uint32_t number, char* to) {
    for (; number >= 0x80; number >>= 7) *to++ = static_cast<char>(number | 0x80);
    *to++ = static_cast<char>(number);
    return to;
}
/// Takes a varint off the front of `bytes`. On failure: false when the bytes end early or the number has over 32 bits.
bool TakeLongVarint(std::string_view& bytes, std::uint32_t& number);
inline bool TakeVarint(std::string_view& bytes, std::uint32_t& number) {
    if (bytes.empty() || static_cast<signed char>(bytes.front()) < 0) return TakeLongVarint(bytes, number);
    number = static_cast<unsigned char>(bytes.front());
    bytes.remove_prefix(1);
    return true;
}

}  // namespace stores
}  // namespace connectdialog
