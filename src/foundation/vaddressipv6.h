// The address of IPv6.
#pragma once

#include "foundation/vinternetaddress.h"

namespace connectdialog {

/// An address of sixteen bytes.
class VAddressIPv6 final : public VInternetAddress {
  public:
    VAddressIPv6() : VInternetAddress(kLayout) {}
    IInternetAddress* Clone() const override { return new VAddressIPv6(*this); }
    /// The address of value 1.
    bool IsLoopback() const override;

  private:
    static constexpr Layout kLayout{platform::kFamilyIpv6, 28, 8, 16};
    VUnicodeString AddressText() const override;
    const char16_t* PortForm() const override { return u"[%1]:%2!hu!"; }
};

}  // namespace connectdialog
