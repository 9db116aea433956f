#include "config/remotehostconfig.h"

#include <array>

#include "config/sessiondbhooks.h"
#include "foundation/vpolicies.h"
#include "profile/vprofilekey.h"
#include "resources/storenames.h"

namespace connectdialog {

std::span<const MemberAccess<RemoteHostConfig>> RemoteHostConfig::Members() {
    static constexpr std::array<MemberAccess<RemoteHostConfig>, 3> kMembers = {
        Member<RemoteHostConfig, &RemoteHostConfig::hostname>,
        Member<RemoteHostConfig, &RemoteHostConfig::firewallName>,
        Member<RemoteHostConfig, &RemoteHostConfig::username>,
    };
    return kMembers;
}

namespace {
/// The older form of the firewall setting was a switch.
VUnicodeString DefaultFirewallName(VProfileKey* key) {
    VUnicodeString present;
    std::uint32_t useFirewall = 0;
    const bool hadSwitch =
        key != nullptr && !key->ReadString(u"Firewall Name", present) && key->ReadDword(u"Use Firewall", useFirewall);
    return hadSwitch && useFirewall != 0 ? u"DefaultTerminalFirewall"_v : VUnicodeString(kNoFirewall);
}
}  // namespace

// Not in the class: the compiler gives a false alarm about freeing it there.
RemoteHostConfig::~RemoteHostConfig() = default;

RemoteHostConfig::RemoteHostConfig(VProfileKey* key) {
    hostname.Load(key, u"Hostname"_v, VUnicodeString());
    firewallName.Load(key, u"Firewall Name"_v, DefaultFirewallName(key));
    ReloadFirewall();
    username.Edit().MarkSensitive();  // before loading: the stored copy shares the buffer
    username.Load(key, u"Username"_v, VUnicodeString());
    // Emptied in memory only: the session shows as changed, and its next save erases the stored name.
    if (!VCanSaveUsernames(nullptr, nullptr)) username.Edit().Empty();
}

RemoteHostConfig::RemoteHostConfig(const RemoteHostConfig& other)
    : VUnknown(other),
      VProfileComposite(other),
      hostname(other.hostname),
      firewallName(other.firewallName),
      username(other.username) {
    ReloadFirewall();
}

IRemoteHostConfig* RemoteHostConfig::Clone() const {
    return new RemoteHostConfig(*this);
}

VProfileData* RemoteHostConfig::FindSetting(std::u16string_view name) {
    VProfileData* own = FindValue(name);
    if (own != nullptr || !firewall) return own;
    return firewall->FindValue(name);
}

void RemoteHostConfig::SetFirewallName(const VUnicodeString& name) {
    firewallName.Set(name);
    ReloadFirewall();
}

void RemoteHostConfig::SetFirewallOverride(const VUnicodeString& name) {
    firewallOverride = name;
    ReloadFirewall();
}

const VUnicodeString& RemoteHostConfig::EffectiveFirewallName() const {
    return firewallOverride.IsEmpty() ? firewallName.Get() : firewallOverride;
}

void RemoteHostConfig::ReloadFirewall() {
    ISessionDbHooks* sessionDb = GetSessionDbHooks();
    sessionDb->UpgradeButtonBars();
    firewall = VRef<IFirewallUI>::Adopt(sessionDb->LoadFirewall(EffectiveFirewallName()));
}

bool RemoteHostConfig::IsSaveUsernamesAllowed(const char16_t* product, const char16_t* secondary) const {
    return VCanSaveUsernames(product, secondary);
}
bool RemoteHostConfig::IsSavePasswordsAllowed(const char16_t* product, const char16_t* secondary) const {
    return VCanSavePasswords(product, secondary);
}

}  // namespace connectdialog
