#include "sessiondb/firewalllist.h"

#include "config/firewallconfig.h"
#include "foundation/ibuffer.h"
#include "foundation/vpath.h"
#include "foundation/vstringarray.h"
#include "profile/unitofwork.h"
#include "profile/vprofilekey.h"
#include "sessiondb/buttonbarupgrade.h"

namespace connectdialog {

namespace {
/// The names of all keys that may be firewalls; read before any is loaded, since loading may write.
VStringArray ListFirewallKeys() {
    VStringArray names;
    VProfileStore store(true);
    if (!store.GetRootKey()->KeyExists(kFirewallsKey)) return names;
    VProfileKey firewalls(store.GetRootKey(), kFirewallsKey, 0);
    VProfileKeyIterator children(firewalls, false);
    VUnicodeString name;
    while (children.Next(name)) names.Add(name);
    return names;
}
}  // namespace

VUnicodeString BuildFirewallKeyPath(const VUnicodeString& name) {
    return name.IsEmpty() ? VUnicodeString(kFirewallsKey) : VJoinPath(kFirewallsKey, name.GetData());
}

FirewallConfig* LoadFirewall(const VUnicodeString& name) {
    if (name == kNoFirewall) return new FirewallConfig(name, nullptr);
    VProfileStore store;
    const VUnicodeString keyPath = BuildFirewallKeyPath(name);
    if (!store.GetRootKey()->KeyExists(keyPath.GetData())) return nullptr;
    VProfileKey key(store.GetRootKey(), keyPath.GetData(), 0);
    VUnicodeString type;
    return key.ReadString(u"Firewall Type", type) ? new FirewallConfig(name, &key) : nullptr;
}

bool SaveFirewall(FirewallConfig& config) {
    const VUnicodeString& name = config.GetFirewallName();
    return name == kNoFirewall ||
           WriteToKey(BuildFirewallKeyPath(name).GetData(), [&](VProfileKey& key) { config.Save(key, true); });
}

void EnumerateFirewalls(IBuffer& buffer) {
    VStringArray names;
    names.Add(VUnicodeString(kNoFirewall));
    for (const VUnicodeString& name : ListFirewallKeys()) {
        UpgradeButtonBars();
        if (name != kNoFirewall && VRef<FirewallConfig>::Adopt(LoadFirewall(name))) names.Add(name);
    }
    names.WriteTo(&buffer);
}

}  // namespace connectdialog
