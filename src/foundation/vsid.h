// Security identifiers: the numbers by which access rules know users and groups.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "foundation/vunicodestring.h"

namespace connectdialog {

/// A value: an authority of 48 bits and up to 15 sub-authorities, in the packed form of MS-DTYP 2.4.2.2, which is
/// revision (1 byte, 1), count (1 byte), authority (6 bytes, big-endian) and the sub-authorities (4 bytes each,
/// little-endian). A default one is not valid, and no two that are not valid are equal.
class VSid {
  public:
    static constexpr std::size_t kMaxSubAuthorities = 15;
    static constexpr std::size_t kHeaderLength = 8;
    static constexpr std::size_t kMaxLength = kHeaderLength + 4 * kMaxSubAuthorities;
    static constexpr std::uint64_t kMaxAuthority = (std::uint64_t{1} << 48) - 1;

    VSid() = default;
    /// Not valid when the authority has more than 48 bits or there are more than 15 sub-authorities.
    VSid(std::uint64_t authority, std::span<const std::uint32_t> subAuthorities);

    /// From the packed form that `bytes` begins with; what follows it is not looked at.
    /// On failure: false with the last error 1337, and the identifier stays.
    bool Load(std::span<const std::uint8_t> bytes);
    /// From the text form `S-1-5-32-544` (MS-DTYP 2.4.2.1): the authority in decimal digits or as 0x and hexadecimal
    /// ones, then 1 to 15 sub-authorities. On failure: as Load.
    bool LoadText(std::u16string_view text);

    bool IsValid() const { return length != 0; }
    /// The packed form; empty when not valid.
    std::span<const std::uint8_t> GetBytes() const { return std::span(bytes).first(length); }
    /// Bytes of the packed form.
    std::size_t GetLength() const { return length; }
    /// The text form; empty when not valid.
    VUnicodeString ToText() const;

    friend bool operator==(const VSid& a, const VSid& b);

  private:
    std::array<std::uint8_t, kMaxLength> bytes{};
    std::size_t length = 0;
};

}  // namespace connectdialog
