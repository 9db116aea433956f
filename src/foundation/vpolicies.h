// What the policies of the machine and the user allow, and where a product keeps its settings.
//
// Both are looked up in the settings hives (foundation/vsettingshive.h). A hive that cannot be read counts as one
// without the value: a policy that nobody can read forbids nothing.
#pragma once

#include <cstdint>

#include "foundation/vunicodestring.h"

namespace connectdialog {

/// The key under which all products of the maker stand.
VUnicodeString VGetVendorRoot();
/// The key of a product: the first that exists, in the machine's hive and then in the user's, of the one below the
/// vendor's root and the one below the maker's former name. There a product whose name contains "Halden" (in this
/// case) has " 3.0" behind its name. When none exists, the first candidate. Null counts as empty.
VUnicodeString VGetProductRoot(const char16_t* product);

/// A policy: from the machine's policies, then the user's, then the machine's global settings.
/// On failure: false when none has it as a dword, and `value` stays.
bool VGetPolicyDword(const char16_t* name, std::uint32_t& value);
/// A setting of the machine for one product. For the terminal products (names that begin with "NorHalden" or "Halden",
/// case ignored) the key of the secondary name below the maker's former name is looked at next; " 3.0" stands behind
/// it for the older of the two.
/// On failure: false, also when one of the two names is null or empty, and `value` stays.
bool VGetProductDword(const char16_t* name, const char16_t* product, const char16_t* secondary, std::uint32_t& value);
/// The policy, else the product's setting, else true.
bool VIsPolicyEnabled(const char16_t* name, const char16_t* product, const char16_t* secondary);

// The two answers are asked for once and then fixed for the process, whatever names a later call gives: a change of
// policy takes effect at the next start. Either name may be null.

/// Whether user names may be kept in the store: the policy "Save Usernames".
bool VCanSaveUsernames(const char16_t* product, const char16_t* secondary);
/// Whether passwords may be kept; never when user names may not. The policy "Save Passwords"; for "Tessaly" a product's
/// setting "Disable Passwords" may take its place.
bool VCanSavePasswords(const char16_t* product, const char16_t* secondary);

/// Forgets the two fixed answers, so that a test can change the policies.
void VForgetPolicies();

}  // namespace connectdialog
