#include "foundation/vaddressipv4.h"

namespace connectdialog {

namespace {
constexpr std::uint8_t kLoopbackNetwork = 127;
}

bool VAddressIPv4::IsLoopback() const {
    return IsValid() && Address()[0] == kLoopbackNetwork;
}

VUnicodeString VAddressIPv4::AddressText() const {
    const std::span<const std::uint8_t> bytes = Address();
    VUnicodeString text;
    text.Format(u"%1!u!.%2!u!.%3!u!.%4!u!", bytes[0], bytes[1], bytes[2], bytes[3]);
    return text;
}

}  // namespace connectdialog
