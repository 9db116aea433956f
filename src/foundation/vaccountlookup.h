// Names of accounts, and looking them up among the accounts of this system.
#pragma once

#include "foundation/iaccountresolver.h"
#include "platform/accounts.h"

namespace connectdialog {

/// Splits `domain\user` or `user@domain`; a name with neither sign is a user without a domain.
void VSplitAccount(const VUnicodeString& name, VUnicodeString& domain, VUnicodeString& user);

/// The name with this computer's own name in place of the domain "localhost": `HOST\user`. Any other name stays.
VUnicodeString VNormalizeAccount(const VUnicodeString& name);

/// A user's identifier is S-1-22-1 with the user's number, a group's is S-1-22-2 with the group's: authority 22 is the
/// one that stands for such accounts where identifiers are exchanged.
VSid MakeAccountSid(const platform::Account& account);

/// Resolves the users and groups of this system. A name with this computer as its domain is looked up without it; a
/// name with another domain as it stands, since a directory service may know it so. Where a user and a group have one
/// name, it is the user's.
class VAccountLookup : public IAccountResolver {
  public:
    bool Resolve(const VUnicodeString& name, VSid& sid) override;
};

}  // namespace connectdialog
