// Security descriptors: who owns an object and who may do what with it.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "foundation/vacl.h"
#include "foundation/vreportmessageparams.h"
#include "foundation/vsid.h"

namespace connectdialog {

class IAccountResolver;
class VStringArray;

/// One row of the names that rules have for rights. A table ends with a row whose name is null.
struct AccessRight {
    const char16_t* name;
    std::uint32_t mask;
};

/// A value: owner, group, the list that decides on access (DACL) and the one that decides on auditing (SACL), which is
/// only carried along. No DACL and a null DACL let everybody in, an empty one nobody.
///
/// It is self-relative while it holds what it was loaded from, byte for byte, and absolute once a part was changed.
/// Each operation that can fail leaves its outcome in the report; on failure it gives false and nothing changes, unless
/// it says otherwise.
class VSecurityDescriptor {
  public:
    /// An absolute descriptor without any part. `rights` and `resolver` are what rules are read with: null knows no
    /// right, and no account but those written as numbers. Requires: both outlive the descriptor and its copies.
    explicit VSecurityDescriptor(const AccessRight* rights = nullptr, IAccountResolver* resolver = nullptr)
        : rights(rights), resolver(resolver) {}

    /// Code 1337 for an identifier that is not valid.
    bool SetOwner(const VSid& newOwner, bool isDefaulted = false);
    bool SetGroup(const VSid& newGroup, bool isDefaulted = false);
    /// Null sets the null DACL.
    void SetDacl(const VAcl* newDacl, bool isDefaulted = false);
    void RemoveDacl();

    /// Not valid when there is none.
    const VSid& GetOwner() const { return owner; }
    const VSid& GetGroup() const { return group; }
    bool HasDacl() const;
    /// Null when there is none or the null DACL.
    const VAcl* GetDacl() const { return dacl ? &*dacl : nullptr; }

    bool IsSelfRelative() const { return !selfRelative.empty(); }
    /// Forgets how the parts lay in what was loaded.
    void MakeAbsolute() { selfRelative.clear(); }
    /// The packed form with offsets (MS-DTYP 2.4.6): a header of 20 bytes, then owner, group, SACL and DACL; what was
    /// loaded comes back as it was.
    std::vector<std::uint8_t> MakeSelfRelative() const;

    /// From the packed form. Code 1338 when it is not valid.
    bool LoadSelfRelative(std::span<const std::uint8_t> bytes);

    /// From rules, one a string: account, `allow` or `deny`, and names of rights with blanks between them, the three
    /// separated by commas; case counts only in accounts. The descriptor then has a DACL and nothing else. The entries
    /// follow the rules in their order, those of one kind for one account are one entry.
    /// On failure: code 13 when there are rules that cannot be read; the insert has them in quotes with commas between
    /// them. The other rules apply all the same.
    bool LoadRules(const VStringArray& rules);

    /// Held by the descriptor; never null.
    VReportMessageParams* GetLastReport() { return &report; }

  private:
    bool SetAccount(VSid& target, const VSid& account, std::uint16_t flag, bool isDefaulted);
    void SetControl(std::uint16_t flag, bool isSet);

    const AccessRight* rights;
    IAccountResolver* resolver;
    std::uint8_t resourceManagerByte = 0;
    std::uint16_t control = 0;  ///< without the flag that says self-relative
    VSid owner;
    VSid group;
    std::optional<VAcl> sacl;
    std::optional<VAcl> dacl;
    std::vector<std::uint8_t> selfRelative;
    VReportMessageParams report;
};

}  // namespace connectdialog
