// The library's view of a network address.
#pragma once

#include <cstddef>
#include <cstdint>

#include "foundation/vunicodestring.h"
#include "foundation/vunknown.h"
#include "platform/numericaddress.h"

namespace connectdialog {

/// The addresses that a name stands for, as a resolver hands them out.
struct VHostEntry {
    platform::AddressFamily family;
    std::size_t addressLength;             ///< bytes of each address
    const std::uint8_t* const* addresses;  ///< in network order; a null ends the list
};

/// An address of one family with a port, and the kind of socket that it is meant for. Ports are in host order.
///
/// A new address is not valid; each Set operation makes it valid or, when it fails, not valid, and gives which. On an
/// address that is not valid every other operation gives false, 0 or the empty text and changes nothing; only the
/// family and the kind of socket are always there. An address of another family is never equal, less or in a subnet.
class IInternetAddress : public IUnknownBase {
  public:
    /// A new object with the same contents, owned by the caller.
    virtual IInternetAddress* Clone() const = 0;
    /// Whether the first `prefixBits` bits of both addresses are the same; more than the address has count as all of
    /// them. Ports that are both other than 0 must be the same too.
    virtual bool IsInSubnet(const IInternetAddress& other, unsigned prefixBits) const = 0;
    /// Whether the addresses are the same, and the ports when both are other than 0.
    virtual bool Equals(const IInternetAddress& other) const = 0;
    /// All bits of the address are zero.
    virtual bool IsAny() const = 0;
    virtual bool IsLoopback() const = 0;

    /// From a socket's address record: see GetSockaddr. One that is longer than the family's is read as far as it goes.
    virtual bool SetFromSockaddr(const std::uint8_t* record, std::size_t length) = 0;
    /// From the address of that index; the port becomes 0.
    virtual bool SetFromHostent(const VHostEntry& entry, std::size_t index) = 0;
    virtual bool SetFromHostentPort(const VHostEntry& entry, std::size_t index, std::uint16_t port) = 0;
    /// From the text of an address, never a name. The broadcast address of IPv4 cannot be set this way.
    virtual bool SetFromText(const VUnicodeString& text, std::uint16_t port) = 0;
    /// From the text of an address and a port: see VSplitHostPort.
    virtual bool SetFromHostPortText(const VUnicodeString& text) = 0;
    virtual bool SetPort(std::uint16_t port) = 0;
    /// By the numbers of the socket interface; at first 1 (stream) and 6 (TCP).
    virtual void GetSocketKind(int& type, int& protocol) const = 0;
    virtual void SetSocketKind(int type, int protocol) = 0;
    /// In network order; `length` must be 4 or 16, by family. The port stays; that of an address not yet valid is 0.
    virtual bool SetRawAddress(const std::uint8_t* bytes, std::size_t length) = 0;

    /// `192.0.2.1` or `2001:db8::1` (see RFC 5952, but for addresses that embed others); with the port
    /// `192.0.2.1:22` or `[2001:db8::1]:22`. A zone is not written. On failure: false, and `text` is empty.
    virtual bool ToText(VUnicodeString& text, bool withPort) const = 0;
    /// The bytes in network order, valid until the address is next changed. On failure: null and 0.
    virtual bool GetRawAddress(const std::uint8_t*& bytes, std::size_t& length) const = 0;
    virtual std::uint16_t GetPort() const = 0;
    /// The record, valid until the address is next changed: family (16 bits, little-endian, by AddressFamily), port
    /// (network order), then for IPv4 the address and 8 zero bytes, together 16; for IPv6 flow information (32 bits),
    /// the address and the number of the zone (32 bits, little-endian), together 28. On failure: null and 0.
    virtual bool GetSockaddr(const std::uint8_t*& record, std::size_t& length) const = 0;
    virtual platform::AddressFamily GetFamily() const = 0;
    virtual int GetSocketType() const = 0;

    /// Goes on to the next address. On failure: false at the last one, which stays.
    virtual bool Increment() = 0;
    /// Whether the address is a smaller number than the other; ports do not count.
    virtual bool IsLess(const IInternetAddress& other) const = 0;

  protected:
    ~IInternetAddress() override = default;
};

}  // namespace connectdialog
