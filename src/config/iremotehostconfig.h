// The far end of a session, shared by its protocols.
#pragma once

#include <string_view>

#include "foundation/vunicodestring.h"
#include "foundation/vunknown.h"

namespace connectdialog {

class IFirewallUI;
class VProfileData;

/// Host, firewall and user of one session.
class IRemoteHostConfig : public IUnknownBase {
  public:
    /// A copy with a firewall object of its own and no override. One reference for the caller.
    virtual IRemoteHostConfig* Clone() const = 0;
    /// The setting of that value name here, or else in the current firewall; null when neither has it.
    virtual VProfileData* FindSetting(std::u16string_view name) = 0;
    virtual void GetHostname(VUnicodeString& hostname) const = 0;
    /// Null is the empty text.
    virtual void SetHostname(const char16_t* hostname) = 0;
    /// One reference for the caller, or null.
    virtual IFirewallUI* GetFirewall() = 0;
    /// The override when there is one, else the session's own.
    virtual void GetFirewallName(VUnicodeString& name) const = 0;
    /// Sets the session's own name and loads that firewall.
    virtual void SetFirewallName(const VUnicodeString& name) = 0;
    /// A name that goes before the session's own and is never saved; empty takes it away.
    virtual void SetFirewallOverride(const VUnicodeString& name) = 0;
    virtual void GetUsername(VUnicodeString& username) const = 0;
    virtual void SetUsername(const VUnicodeString& username) = 0;
    /// What the policies of machine and user say. Either name may be null.
    virtual bool IsSaveUsernamesAllowed(const char16_t* product, const char16_t* secondary) const = 0;
    virtual bool IsSavePasswordsAllowed(const char16_t* product, const char16_t* secondary) const = 0;
    void Destroy() override = 0;
    /// The setting of that value name, case ignored, or null. Owned by this object.
    virtual VProfileData* FindValue(std::u16string_view name) = 0;

  protected:
    ~IRemoteHostConfig() override = default;
};

}  // namespace connectdialog
