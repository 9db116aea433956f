// The named firewalls in the store.
#pragma once

#include "foundation/vunicodestring.h"
#include "resources/storenames.h"

namespace connectdialog {

class FirewallConfig;
class IBuffer;

/// The key of a firewall; an empty name gives the key above all of them.
VUnicodeString BuildFirewallKeyPath(const VUnicodeString& name);
/// Opens a firewall; exactly "None" gives one without a key. Null when the key does not exist or has no "Firewall
/// Type". One reference for the caller.
FirewallConfig* LoadFirewall(const VUnicodeString& name);
/// Writes all of it under its name; "None" is never written, which is true. False when the store refused.
bool SaveFirewall(FirewallConfig& config);
/// Writes the names in the binary form of a string array, "None" first. Each is loaded once, which brings what older
/// versions stored up to date.
void EnumerateFirewalls(IBuffer& buffer);

}  // namespace connectdialog
