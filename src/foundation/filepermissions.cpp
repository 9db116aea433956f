#include "foundation/filepermissions.h"

#include "foundation/vaccountlookup.h"
#include "foundation/vsecuritydescriptor.h"
#include "platform/accounts.h"
#include "platform/files.h"

namespace connectdialog {

namespace {

using platform::Account;

constexpr std::uint32_t kGenericAll = 0x10000000;
/// An entry that counts for what is made below the object alone.
constexpr std::uint8_t kInheritOnly = 8;
constexpr std::uint32_t kWorld[] = {0};

struct Right {
    std::uint32_t mask;
    std::uint32_t bit;
};
constexpr Right kRights[] = {{kGenericAll | platform::kGenericRead | platform::kFileReadData, 4},
                             {kGenericAll | platform::kGenericWrite | platform::kFileWriteData, 2}};

enum class Party { kOwner, kGroup, kOthers };

class Decision {
  public:
    explicit Decision(const VAcl& dacl) : dacl(dacl) {}

    bool MayUse(const Right& right, Party party) const {
        VAclEntry entry;
        for (std::size_t i = 0; dacl.GetEntry(i, entry); ++i) {
            if ((entry.flags & kInheritOnly) != 0) continue;
            const bool isAllow = entry.type == static_cast<std::uint8_t>(AccessKind::kAllow);
            const bool isDeny = entry.type == static_cast<std::uint8_t>(AccessKind::kDeny);
            if ((isAllow || isDeny) && (entry.mask & right.mask) == 0) continue;
            if (isAllow && IsMeant(entry.sid, party)) return true;
            if (!isAllow && MayBeMeant(entry.sid, party)) return false;
        }
        return false;
    }

  private:
    /// Whether all of the party are.
    bool IsMeant(const VSid& sid, Party party) const {
        if (sid == everybody) return true;
        return party == Party::kOwner ? sid == user || sid == group : party == Party::kGroup && sid == group;
    }
    /// Whether some may be, as far as can be told from here.
    bool MayBeMeant(const VSid& sid, Party party) const {
        if (IsMeant(sid, party)) return true;
        return party != Party::kOwner && !(sid == user) && !(sid == group);
    }

    const VAcl& dacl;
    const VSid everybody{1, kWorld};
    const VSid user = MakeAccountSid(platform::GetOwnAccount(Account::Kind::kUser));
    const VSid group = MakeAccountSid(platform::GetOwnAccount(Account::Kind::kGroup));
};

}  // namespace

std::uint32_t GetFilePermissions(const VSecurityDescriptor* descriptor) {
    if (descriptor == nullptr || !descriptor->HasDacl()) return platform::kOwnerReadsAndWrites;
    const VAcl* dacl = descriptor->GetDacl();
    if (dacl == nullptr) return platform::kAllReadAndWrite;
    const Decision decision(*dacl);
    std::uint32_t permissions = 0;
    for (const Party party : {Party::kOwner, Party::kGroup, Party::kOthers}) {
        permissions <<= 3;
        for (const Right& right : kRights) permissions |= decision.MayUse(right, party) ? right.bit : 0;
    }
    return permissions;
}

}  // namespace connectdialog
