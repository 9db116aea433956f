// The far end of a session: host name, firewall, user name.
#pragma once

#include <span>

#include "config/ifirewallui.h"
#include "config/iremotehostconfig.h"
#include "profile/vprofile2.h"
#include "profile/vprofilecomposite.h"

namespace connectdialog {

/// Made lazily by the session's CommonConfig and shared by the session's protocols.
class RemoteHostConfig : public VUnknown<IRemoteHostConfig>, public VProfileComposite<RemoteHostConfig> {
  public:
    /// `key` may be null: then every member has its default.
    explicit RemoteHostConfig(VProfileKey* key);

    static std::span<const MemberAccess<RemoteHostConfig>> Members();

    IRemoteHostConfig* Clone() const override;
    VProfileData* FindSetting(std::u16string_view name) override;
    void GetHostname(VUnicodeString& text) const override { text = hostname.Get(); }
    void SetHostname(const char16_t* text) override { hostname.Set(text); }
    IFirewallUI* GetFirewall() override { return VRef(firewall).Detach(); }
    void GetFirewallName(VUnicodeString& name) const override { name = EffectiveFirewallName(); }
    void SetFirewallName(const VUnicodeString& name) override;
    void SetFirewallOverride(const VUnicodeString& name) override;
    void GetUsername(VUnicodeString& text) const override { text = username.Get(); }
    void SetUsername(const VUnicodeString& text) override { username.Set(text); }
    bool IsSaveUsernamesAllowed(const char16_t* product, const char16_t* secondary) const override;
    bool IsSavePasswordsAllowed(const char16_t* product, const char16_t* secondary) const override;
    void Destroy() override { delete this; }
    VProfileData* FindValue(std::u16string_view name) override { return VProfileComposite::FindValue(name); }

  private:
    RemoteHostConfig(const RemoteHostConfig& other);
    ~RemoteHostConfig() override;

    const VUnicodeString& EffectiveFirewallName() const;
    void ReloadFirewall();

    VProfileText hostname;
    VProfileText firewallName;
    VProfileText username;
    VUnicodeString firewallOverride;
    VRef<IFirewallUI> firewall;
};

}  // namespace connectdialog
