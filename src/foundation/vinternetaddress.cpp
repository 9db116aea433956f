#include "foundation/vinternetaddress.h"

#include <algorithm>

#include "foundation/byteorder.h"
#include "foundation/hostnames.h"

namespace connectdialog {

namespace {

constexpr std::size_t kPortOffset = 2;
constexpr std::size_t kScopeOffset = 24;  // of IPv6

bool HaveSamePort(const IInternetAddress& a, const IInternetAddress& b) {
    return a.GetPort() == 0 || b.GetPort() == 0 || a.GetPort() == b.GetPort();
}

bool IsAllOnes(std::span<const std::uint8_t> bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](std::uint8_t byte) { return byte == 0xFF; });
}

}  // namespace

bool VInternetAddress::Invalidate() {
    valid = false;
    record.fill(0);
    return false;
}

void VInternetAddress::StorePort(std::uint16_t port) {
    StoreBigEndian(port, record.data() + kPortOffset);
}

bool VInternetAddress::Set(const std::uint8_t* bytes, std::uint16_t port) {
    record.fill(0);
    StoreLittleEndian<std::uint16_t>(layout->family, record.data());
    StorePort(port);
    std::copy_n(bytes, layout->addressSize, record.data() + layout->addressOffset);
    valid = true;
    return true;
}

bool VInternetAddress::IsSameUpTo(const IInternetAddress& other, std::size_t bits) const {
    const std::uint8_t* bytes = nullptr;
    std::size_t length = 0;
    if (!valid || other.GetFamily() != layout->family || !other.GetRawAddress(bytes, length)) return false;
    bits = std::min(bits, layout->addressSize * 8);
    const std::span<const std::uint8_t> own = Address();
    if (!std::equal(bytes, bytes + bits / 8, own.begin())) return false;
    const auto mask = static_cast<std::uint8_t>(0xFF00 >> bits % 8);
    return bits % 8 == 0 || ((bytes[bits / 8] ^ own[bits / 8]) & mask) == 0;
}

bool VInternetAddress::IsInSubnet(const IInternetAddress& other, unsigned prefixBits) const {
    return IsSameUpTo(other, prefixBits) && HaveSamePort(*this, other);
}

bool VInternetAddress::Equals(const IInternetAddress& other) const {
    return IsSameUpTo(other, layout->addressSize * 8) && HaveSamePort(*this, other);
}

bool VInternetAddress::IsAny() const {
    const std::span<const std::uint8_t> bytes = Address();
    return valid && std::all_of(bytes.begin(), bytes.end(), [](std::uint8_t byte) { return byte == 0; });
}

bool VInternetAddress::SetFromSockaddr(const std::uint8_t* source, std::size_t length) {
    if (source == nullptr || length < layout->recordSize) return Invalidate();
    if (LoadLittleEndian<std::uint16_t>(source) != layout->family) return Invalidate();
    std::copy_n(source, layout->recordSize, record.data());
    valid = true;
    return true;
}

bool VInternetAddress::SetFromHostent(const VHostEntry& entry, std::size_t index) {
    return SetFromHostentPort(entry, index, 0);
}

bool VInternetAddress::SetFromHostentPort(const VHostEntry& entry, std::size_t index, std::uint16_t port) {
    const bool fits = entry.family == layout->family && entry.addressLength == layout->addressSize;
    if (!fits || entry.addresses == nullptr) return Invalidate();
    const std::uint8_t* const* address = entry.addresses;
    for (; index > 0 && *address != nullptr; --index) ++address;
    return *address != nullptr ? Set(*address, port) : Invalidate();
}

bool VInternetAddress::SetFromText(const VUnicodeString& text, std::uint16_t port) {
    platform::NumericAddress read;
    if (!platform::ReadNumericAddress(text, layout->family, read)) return Invalidate();
    const bool isBroadcast = layout->family == platform::kFamilyIpv4 && IsAllOnes({read.bytes.data(), 4});
    if (isBroadcast) return Invalidate();
    Set(read.bytes.data(), port);
    if (layout->family == platform::kFamilyIpv6) StoreLittleEndian(read.scope, record.data() + kScopeOffset);
    return true;
}

bool VInternetAddress::SetFromHostPortText(const VUnicodeString& text) {
    VUnicodeString host;
    std::uint16_t port = 0;
    return VSplitHostPort(text, host, port) ? SetFromText(host, port) : Invalidate();
}

bool VInternetAddress::SetPort(std::uint16_t port) {
    if (valid) StorePort(port);
    return valid;
}

void VInternetAddress::GetSocketKind(int& type, int& socketProtocol) const {
    type = socketType;
    socketProtocol = protocol;
}

void VInternetAddress::SetSocketKind(int type, int socketProtocol) {
    socketType = type;
    protocol = socketProtocol;
}

bool VInternetAddress::SetRawAddress(const std::uint8_t* bytes, std::size_t length) {
    if (bytes == nullptr || length != layout->addressSize) return Invalidate();
    std::array<std::uint8_t, 16> copy{};  // `bytes` may lie in the record
    std::copy_n(bytes, length, copy.data());
    return Set(copy.data(), GetPort());
}

bool VInternetAddress::ToText(VUnicodeString& text, bool withPort) const {
    text.Empty();
    if (!valid) return false;
    if (withPort) {
        text.Format(PortForm(), AddressText(), GetPort());
    } else {
        text = AddressText();
    }
    return true;
}

bool VInternetAddress::GetRawAddress(const std::uint8_t*& bytes, std::size_t& length) const {
    bytes = valid ? Address().data() : nullptr;
    length = valid ? Address().size() : 0;
    return valid;
}

std::uint16_t VInternetAddress::GetPort() const {
    return LoadBigEndian<std::uint16_t>(record.data() + kPortOffset);
}

bool VInternetAddress::GetSockaddr(const std::uint8_t*& out, std::size_t& length) const {
    out = valid ? record.data() : nullptr;
    length = valid ? layout->recordSize : 0;
    return valid;
}

bool VInternetAddress::Increment() {
    if (!valid || IsAllOnes(Address())) return false;
    std::uint8_t* byte = record.data() + layout->addressOffset + layout->addressSize;
    do {
        ++*--byte;
    } while (*byte == 0);
    return true;
}

bool VInternetAddress::IsLess(const IInternetAddress& other) const {
    const std::uint8_t* bytes = nullptr;
    std::size_t length = 0;
    if (!valid || other.GetFamily() != layout->family || !other.GetRawAddress(bytes, length)) return false;
    const std::span<const std::uint8_t> own = Address();
    return std::lexicographical_compare(own.begin(), own.end(), bytes, bytes + length);
}

}  // namespace connectdialog
