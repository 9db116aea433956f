// Internet addresses written as numbers, read by the system's resolver. No name is ever looked up.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace connectdialog::platform {

/// The families of addresses, by the numbers that address records carry on every platform.
enum AddressFamily : std::uint16_t { kAnyFamily = 0, kFamilyIpv4 = 2, kFamilyIpv6 = 23 };

struct NumericAddress {
    AddressFamily family = kAnyFamily;
    std::array<std::uint8_t, 16> bytes{};  ///< in network order; the first 4 when the family is kFamilyIpv4
    std::uint32_t scope = 0;               ///< the zone behind a `%`, which must be one of this machine; 0 for none
};

/// Reads the text of an address of the family, or of either with kAnyFamily. The system's short, octal and hexadecimal
/// forms of IPv4 count; brackets, ports and text behind the address do not.
/// On failure: false with the last error 87, and `address` stays.
bool ReadNumericAddress(std::u16string_view text, AddressFamily family, NumericAddress& address);

}  // namespace connectdialog::platform
