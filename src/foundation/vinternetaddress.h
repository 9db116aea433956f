// What addresses of both families have in common.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "foundation/iinternetaddress.h"

namespace connectdialog {

/// Keeps the socket's address record; a family is a description of where its parts stand.
class VInternetAddress : public VUnknown<IInternetAddress> {
  public:
    bool IsInSubnet(const IInternetAddress& other, unsigned prefixBits) const override;
    bool Equals(const IInternetAddress& other) const override;
    bool IsAny() const override;

    bool SetFromSockaddr(const std::uint8_t* source, std::size_t length) override;
    bool SetFromHostent(const VHostEntry& entry, std::size_t index) override;
    bool SetFromHostentPort(const VHostEntry& entry, std::size_t index, std::uint16_t port) override;
    bool SetFromText(const VUnicodeString& text, std::uint16_t port) override;
    bool SetFromHostPortText(const VUnicodeString& text) override;
    bool SetPort(std::uint16_t port) override;
    void GetSocketKind(int& type, int& socketProtocol) const override;
    void SetSocketKind(int type, int socketProtocol) override;
    bool SetRawAddress(const std::uint8_t* bytes, std::size_t length) override;

    bool ToText(VUnicodeString& text, bool withPort) const override;
    bool GetRawAddress(const std::uint8_t*& bytes, std::size_t& length) const override;
    std::uint16_t GetPort() const override;
    bool GetSockaddr(const std::uint8_t*& out, std::size_t& length) const override;
    platform::AddressFamily GetFamily() const override { return layout->family; }
    int GetSocketType() const override { return socketType; }

    bool Increment() override;
    bool IsLess(const IInternetAddress& other) const override;

  protected:
    /// Of the record of one family. Sizes and offsets count bytes.
    struct Layout {
        platform::AddressFamily family;
        std::size_t recordSize;
        std::size_t addressOffset;
        std::size_t addressSize;
    };

    /// Requires: the layout outlives the address.
    explicit VInternetAddress(const Layout& layout) : layout(&layout) {}
    VInternetAddress(const VInternetAddress& other) = default;

    bool IsValid() const { return valid; }
    std::span<const std::uint8_t> Address() const {
        return std::span(record).subspan(layout->addressOffset, layout->addressSize);
    }
    /// The text of a valid address.
    virtual VUnicodeString AddressText() const = 0;
    /// The form of address and port as a message template of these two.
    virtual const char16_t* PortForm() const = 0;

  private:
    bool Invalidate();
    bool Set(const std::uint8_t* bytes, std::uint16_t port);
    void StorePort(std::uint16_t port);
    bool IsSameUpTo(const IInternetAddress& other, std::size_t bits) const;

    const Layout* layout;
    bool valid = false;
    int socketType = 1;
    int protocol = 6;
    std::array<std::uint8_t, 28> record{};
};

}  // namespace connectdialog
