#include "keymap/profilekeymap.h"

#include <vector>

#include "keymap/binarykeymap.h"
#include "keymap/keymapreader.h"
#include "keymap/keymapwriter.h"
#include "profile/vprofilekey.h"

namespace connectdialog {

namespace {

constexpr char16_t kListMark[] = u" v3";
constexpr char16_t kSecondMark[] = u" v2";
constexpr char16_t kSecondName[] = u"Keymap v2";
constexpr char16_t kFirstName[] = u"Keymap";

/// Asks for the size first: few sessions have such a value, and then no memory is needed.
bool ReadBinary(VProfileKey* key, const VUnicodeString& name, std::vector<std::uint8_t>& data) {
    std::uint32_t size = 0;
    if (key == nullptr || !key->ReadBinary(name.GetData(), nullptr, size)) return false;
    if (size > ProfileKeymap::kLargestBinaryValue) return false;
    size = static_cast<std::uint32_t>(ProfileKeymap::kLargestBinaryValue);
    data.resize(size);
    if (!key->ReadBinary(name.GetData(), data.data(), size)) return false;
    data.resize(size);
    return true;
}

bool HasOlderForm(VProfileKey* key) {
    std::uint32_t size = 0;
    return key != nullptr &&
           (key->ReadBinary(kSecondName, nullptr, size) || key->ReadBinary(kFirstName, nullptr, size));
}

/// The value of that name, or else the one of the form before.
bool ReadBinaryOrOlder(VProfileKey* key, const VUnicodeString& name, std::vector<std::uint8_t>& data) {
    if (ReadBinary(key, name, data)) return true;
    const std::size_t mark = name.Find(kSecondMark);
    return mark != VUnicodeString::kNotFound && ReadBinary(key, name.Left(mark), data);
}

}  // namespace

ProfileKeymap::ProfileKeymap(const ProfileKeymap& other) : ProfileKeymap(other, WithoutSnapshot()) {
    if (other.snapshot) snapshot.reset(new ProfileKeymap(*other.snapshot, WithoutSnapshot()));
}

ProfileKeymap::ProfileKeymap(const ProfileKeymap& other, WithoutSnapshot) : VProfileTextList(other), Keymap(other) {}

ProfileKeymap::~ProfileKeymap() = default;

/// A snapshot has none itself: each would hold the one before otherwise, without end. The keymap of most sessions is
/// empty, which needs none.
void ProfileKeymap::TakeSnapshot() {
    const bool isEmpty = GetEntries().GetCount() == 0;
    snapshot.reset(isEmpty ? nullptr : new ProfileKeymap(*this, WithoutSnapshot()));
}

void ProfileKeymap::ParseLines() {
    RemoveAllEntries();
    KeymapReader reader(*this);
    for (const VUnicodeString& line : Get()) reader.ReadLine(line);
}

void ProfileKeymap::FormatLines() {
    Set(FormatBindings(GetEntries()));
}

ProfileKeymap ProfileKeymap::CopyWithLines() const {
    ProfileKeymap copy(*this, WithoutSnapshot());
    copy.FormatLines();
    return copy;
}

bool ProfileKeymap::LoadNewest(VProfileKey* key) {
    const VUnicodeString name = u"Keymap v3"_v;
    LoadLinesValue(key, name, VStringArray());
    if (!IsMissing() || !HasOlderForm(key)) return true;
    SetMissing(false);  // also where it cannot be read: an empty keymap must not take its place
    std::vector<std::uint8_t> data;
    if (!ReadBinaryOrOlder(key, VUnicodeString(kSecondName), data)) return true;
    return LoadBinaryValue(key, name, data.data(), data.size());
}

bool ProfileKeymap::ReadValue(VProfileKey* key, const VUnicodeString& name) {
    if (name.Find(kListMark) != VUnicodeString::kNotFound) {
        VStringArray lines;
        if (key != nullptr) key->ReadMultiString(name.GetData(), lines);
        return LoadLinesValue(key, name, lines);
    }
    // Under its own name: it is never written under an older one, where no reader expects lines.
    std::vector<std::uint8_t> data;
    const bool isRead = ReadBinaryOrOlder(key, name, data);
    return LoadBinaryValue(key, u"Keymap v3"_v, isRead ? data.data() : nullptr, data.size());
}

bool ProfileKeymap::LoadLinesValue(VProfileKey* key, const VUnicodeString& name, const VStringArray& lines) {
    VProfileTextList::Load(key, name, lines);
    ParseLines();
    TakeSnapshot();
    return true;
}

bool ProfileKeymap::LoadBinaryValue(VProfileKey*, const VUnicodeString& name, const std::uint8_t* data,
                                    std::size_t size) {
    SetName(name);
    RemoveAllEntries();
    if (data != nullptr) {
        const BinaryKeymapResult result = ReadBinaryKeymap(data, size, *this);
        if (result != BinaryKeymapResult::kWhole) return result == BinaryKeymapResult::kCutShort;
        SetMissing(false);
    }
    TakeSnapshot();
    return true;
}

void ProfileKeymap::Save(VProfileKey& key, bool force) {
    if (!force && !IsMissing() && !IsChanged()) return;
    FormatLines();
    // Also when the lines are the old ones: what was read from an older form, they do not show.
    VProfileTextList::Save(key, true);
    TakeSnapshot();
}

bool ProfileKeymap::IsChanged() const {
    const Keymap& keymap = *this;
    return snapshot ? !(keymap == *snapshot) : GetEntries().GetCount() != 0;
}

void ProfileKeymap::Commit() {
    if (!IsChanged()) return;
    SetMissing(true);
    TakeSnapshot();
}

void ProfileKeymap::Revert() {
    if (snapshot)
        Assign(*snapshot);
    else
        RemoveAllEntries();
}

void ProfileKeymap::Assign(const VProfileData& other) {
    const auto* same = dynamic_cast<const ProfileKeymap*>(&other);
    if (same == nullptr) return;
    VProfileTextList::Assign(other);
    Keymap::operator=(*same);
}

bool ProfileKeymap::Load(const char* text, IProfileTextDecoder& decoder, VReportMessageParams& report) {
    if (!VProfileTextList::Load(text, decoder, report)) return false;
    ParseLines();
    TakeSnapshot();
    return true;
}

bool ProfileKeymap::GetVariant(VVariant& out, VReportMessageParams& report) const {
    return CopyWithLines().VProfileTextList::GetVariant(out, report);
}

bool ProfileKeymap::PutValue(IProfileValueExchange& exchange, const char16_t* name) const {
    return CopyWithLines().VProfileTextList::PutValue(exchange, name);
}

bool ProfileKeymap::SetVariant(const VVariant& in, VReportMessageParams& report) {
    if (!VProfileTextList::SetVariant(in, report)) return false;
    ParseLines();
    return true;
}

bool ProfileKeymap::GetValue(IProfileValueExchange& exchange, const char16_t* name) {
    if (!VProfileTextList::GetValue(exchange, name)) return false;
    ParseLines();
    return true;
}

bool ProfileKeymap::Load(const VUnicodeString&, VReportMessageParams&) {
    return true;
}

bool ProfileKeymap::Save(const VUnicodeString&) {
    return true;
}

}  // namespace connectdialog
