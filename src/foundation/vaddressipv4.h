// The address of IPv4.
#pragma once

#include "foundation/vinternetaddress.h"

namespace connectdialog {

/// An address of four bytes.
class VAddressIPv4 final : public VInternetAddress {
  public:
    VAddressIPv4() : VInternetAddress(kLayout) {}
    IInternetAddress* Clone() const override { return new VAddressIPv4(*this); }
    /// An address of the network 127.
    bool IsLoopback() const override;

  private:
    static constexpr Layout kLayout{platform::kFamilyIpv4, 16, 4, 4};
    VUnicodeString AddressText() const override;
    const char16_t* PortForm() const override { return u"%1:%2!hu!"; }
};

}  // namespace connectdialog
