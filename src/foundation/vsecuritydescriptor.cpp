#include "foundation/vsecuritydescriptor.h"

#include <algorithm>

#include "foundation/byteorder.h"
#include "foundation/securityrules.h"
#include "platform/lasterror.h"

namespace connectdialog {

namespace {

constexpr std::size_t kHeaderLength = 20;
constexpr std::uint8_t kRevision = 1;

constexpr std::size_t kResourceManagerOffset = 1;
constexpr std::size_t kControlOffset = 2;
constexpr std::size_t kOwnerOffset = 4;
constexpr std::size_t kGroupOffset = 8;
constexpr std::size_t kSaclOffset = 12;
constexpr std::size_t kDaclOffset = 16;

enum ControlFlag : std::uint16_t {
    kOwnerDefaulted = 0x0001,
    kGroupDefaulted = 0x0002,
    kDaclPresent = 0x0004,
    kDaclDefaulted = 0x0008,
    kSaclPresent = 0x0010,
    kSelfRelative = 0x8000
};

using Bytes = std::span<const std::uint8_t>;

/// The bytes from the place on that a field of the header names: none for 0. False when it lies outside.
bool FindPart(Bytes bytes, std::size_t field, Bytes& part) {
    const std::size_t offset = LoadLittleEndian<std::uint32_t>(bytes.data() + field);
    if (offset != 0 && (offset < kHeaderLength || offset >= bytes.size())) return false;
    part = offset != 0 ? bytes.subspan(offset) : Bytes();
    return true;
}

bool ReadSid(Bytes bytes, std::size_t field, VSid& sid) {
    Bytes part;
    return FindPart(bytes, field, part) && (part.empty() || sid.Load(part));
}

bool ReadList(Bytes bytes, std::size_t field, std::optional<VAcl>& list) {
    Bytes part;
    if (!FindPart(bytes, field, part)) return false;
    return part.empty() || list.emplace().Load(part);
}

void AppendPart(std::vector<std::uint8_t>& bytes, std::size_t field, Bytes part) {
    if (part.empty()) return;
    StoreLittleEndian(static_cast<std::uint32_t>(bytes.size()), bytes.data() + field);
    bytes.insert(bytes.end(), part.begin(), part.end());
    bytes.resize((bytes.size() + 3) / 4 * 4);  // the next part is aligned as it would be in memory
}

}  // namespace

void VSecurityDescriptor::SetControl(std::uint16_t flag, bool isSet) {
    const auto others = static_cast<std::uint16_t>(control & ~flag);
    control = isSet ? static_cast<std::uint16_t>(others | flag) : others;
}

bool VSecurityDescriptor::SetAccount(VSid& target, const VSid& account, std::uint16_t flag, bool isDefaulted) {
    report.Clear();
    if (!account.IsValid()) return report.Fail(platform::kInvalidSid);
    target = account;
    SetControl(flag, isDefaulted);
    MakeAbsolute();
    return true;
}

bool VSecurityDescriptor::SetOwner(const VSid& newOwner, bool isDefaulted) {
    return SetAccount(owner, newOwner, kOwnerDefaulted, isDefaulted);
}

bool VSecurityDescriptor::SetGroup(const VSid& newGroup, bool isDefaulted) {
    return SetAccount(group, newGroup, kGroupDefaulted, isDefaulted);
}

void VSecurityDescriptor::SetDacl(const VAcl* newDacl, bool isDefaulted) {
    report.Clear();
    dacl = newDacl != nullptr ? std::optional(*newDacl) : std::nullopt;
    SetControl(kDaclPresent, true);
    SetControl(kDaclDefaulted, isDefaulted);
    MakeAbsolute();
}

void VSecurityDescriptor::RemoveDacl() {
    SetDacl(nullptr);
    SetControl(kDaclPresent, false);
}

bool VSecurityDescriptor::HasDacl() const {
    return (control & kDaclPresent) != 0;
}

std::vector<std::uint8_t> VSecurityDescriptor::MakeSelfRelative() const {
    if (IsSelfRelative()) return selfRelative;
    std::vector<std::uint8_t> bytes(kHeaderLength);
    bytes[0] = kRevision;
    bytes[kResourceManagerOffset] = resourceManagerByte;
    StoreLittleEndian(static_cast<std::uint16_t>(control | kSelfRelative), bytes.data() + kControlOffset);
    AppendPart(bytes, kOwnerOffset, owner.GetBytes());
    AppendPart(bytes, kGroupOffset, group.GetBytes());
    AppendPart(bytes, kSaclOffset, sacl ? sacl->GetBytes() : Bytes());
    AppendPart(bytes, kDaclOffset, dacl ? dacl->GetBytes() : Bytes());
    return bytes;
}

bool VSecurityDescriptor::LoadSelfRelative(std::span<const std::uint8_t> bytes) {
    report.Clear();
    if (bytes.size() < kHeaderLength || bytes[0] != kRevision) {
        return report.Fail(platform::kInvalidSecurityDescriptor);
    }
    VSecurityDescriptor loaded(rights, resolver);
    loaded.control = LoadLittleEndian<std::uint16_t>(bytes.data() + kControlOffset);
    loaded.resourceManagerByte = bytes[kResourceManagerOffset];
    const bool hasSacl = (loaded.control & kSaclPresent) != 0;
    const bool isRead = (loaded.control & kSelfRelative) != 0 && ReadSid(bytes, kOwnerOffset, loaded.owner) &&
                        ReadSid(bytes, kGroupOffset, loaded.group) &&
                        (!hasSacl || ReadList(bytes, kSaclOffset, loaded.sacl)) &&
                        (!loaded.HasDacl() || ReadList(bytes, kDaclOffset, loaded.dacl));
    if (!isRead) return report.Fail(platform::kInvalidSecurityDescriptor);
    loaded.SetControl(kSelfRelative, false);
    loaded.selfRelative.assign(bytes.begin(), bytes.end());
    *this = loaded;
    return true;
}

bool VSecurityDescriptor::LoadRules(const VStringArray& rules) {
    VAcl list;
    const VUnicodeString refused = MakeList(rules, rights, resolver, list);
    VSecurityDescriptor loaded(rights, resolver);
    loaded.SetDacl(&list);
    *this = loaded;
    return refused.IsEmpty() || report.Fail(platform::kInvalidData, refused.GetData());
}

}  // namespace connectdialog
