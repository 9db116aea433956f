// What a security descriptor says about a new file, in the terms of this system.
#pragma once

#include <cstdint>

namespace connectdialog {

class VSecurityDescriptor;

/// The permissions of a file (see platform::FileOpening) that this user makes under the descriptor: who may read and
/// write by its DACL, first entry first. The system knows three parties: this user, the members of this user's group,
/// and all others, who get in as everybody (S-1-1-0) alone. It cannot let in one more account, so such an entry gives
/// nothing; and where one account is kept out that is neither this user nor that group, group and others are kept out
/// with it, as they are by an entry of an unknown kind. So nobody gets in whom the DACL keeps out, but for this user.
/// Null or no DACL: this user alone. The null DACL: everybody. Owner, group and SACL do not count.
std::uint32_t GetFilePermissions(const VSecurityDescriptor* descriptor);

}  // namespace connectdialog
