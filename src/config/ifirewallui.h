// A firewall as protocol code sees it.
#pragma once

#include <cstdint>
#include <string_view>

#include "foundation/vunicodestring.h"
#include "foundation/vunknown.h"

namespace connectdialog {

class IString;
class VProfileData;

/// A named way to reach a host through a proxy, which can ask the user for what its record lacks.
class IFirewallUI : public IUnknownBase {
  public:
    virtual void GetType(VUnicodeString& type) const = 0;
    virtual void GetAddress(VUnicodeString& address) const = 0;
    virtual std::uint16_t GetPort() const = 0;
    /// May ask the user. True when it has one.
    virtual bool GetUsername(IString* username) = 0;
    virtual bool GetPassword(IString* password) = 0;
    virtual void GetProxyPrompt(VUnicodeString& prompt) const = 0;
    virtual void GetProxyCommand(VUnicodeString& command) const = 0;
    void Destroy() override = 0;
    /// The setting of that value name, case ignored, or null. Owned by the firewall.
    virtual VProfileData* FindValue(std::u16string_view name) = 0;

  protected:
    ~IFirewallUI() override = default;
};

}  // namespace connectdialog
