// What a session asks of the session database, which lies above it: named firewalls and the upgrade of old button bars.
#pragma once

#include "foundation/vunicodestring.h"

namespace connectdialog {

class FirewallConfig;
class IBuffer;
class IFirewallUI;

/// Given by the session database at start-up. While it is not, there are no firewalls: a name loads nothing, and the
/// list holds "None" alone.
class ISessionDbHooks {
  public:
    virtual ~ISessionDbHooks() = default;
    /// One reference for the caller; null when the name does not open.
    virtual IFirewallUI* LoadFirewall(const VUnicodeString& name) = 0;
    /// Stores a firewall whose settings changed under its name. False when the store refused.
    virtual bool SaveFirewall(FirewallConfig& config) = 0;
    /// Writes the names in the array's binary form, "None" first.
    virtual void EnumerateFirewalls(IBuffer& buffer) = 0;
    /// Moves button bars of older versions to the present form; does nothing when there are none.
    virtual void UpgradeButtonBars() = 0;
};

/// Installs the hooks, which stay the caller's; null removes them.
void InstallSessionDbHooks(ISessionDbHooks* hooks);
/// What was installed, or an object that knows no firewall and no button bar. Never null.
ISessionDbHooks* GetSessionDbHooks();

}  // namespace connectdialog
