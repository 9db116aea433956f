#include "stores/common/storekey.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "foundation/vstringarray.h"
#include "platform/lasterror.h"
#include "profile/securityvalue.h"
#include "stores/common/profilestore.h"

namespace connectdialog::stores {

namespace {
constexpr std::size_t kMaxPageSize = 1024;

const char16_t* OrEmpty(const char16_t* name) {
    return name != nullptr ? name : u"";
}
}  // namespace

StoreKey::StoreKey(std::shared_ptr<StorePart> storePart, bool readOnly)
    : part(std::move(storePart)), place(std::make_shared<KeyPlace>()), readOnly(readOnly) {
    place->node = part->GetTree().GetRoot();
}

StoreKey::StoreKey(std::shared_ptr<StorePart> part, std::shared_ptr<KeyPlace> place, bool readOnly)
    : part(std::move(part)), place(std::move(place)), readOnly(readOnly) {}

StoreKey::~StoreKey() = default;

bool StoreKey::Succeed(std::uint32_t code) {
    return code == platform::kSuccess || report.Fail(code);
}

/// The key at the place, or null with a report. Recursion ends at kMaxKeyDepth: each place lies a level deeper.
StoreNode* StoreKey::Find(KeyPlace& at, bool forCheck) {
    if (at.node != nullptr && !at.node->IsUndone()) return at.node.get();
    at.node.reset();
    if (!at.validName) {
        report.Fail(platform::kInvalidParameter);
        return nullptr;
    }
    const std::uint64_t generation = part->GetTree().GetGeneration();
    if (at.absentAt == generation && !forCheck) {
        report.Fail(platform::kFileNotFound);
        return nullptr;
    }
    StoreNode* parent = Find(*at.parent);
    if (parent == nullptr) return nullptr;
    at.node = parent->Find(at.name, forCheck, report);
    if (at.node == nullptr && report.GetCode() == platform::kFileNotFound) at.absentAt = generation;
    return at.node.get();
}

StoreNode* StoreKey::FindOrCreate(KeyPlace& at) {
    if (at.node != nullptr && !at.node->IsUndone()) return at.node.get();
    at.node.reset();
    if (!at.validName) {
        report.Fail(platform::kInvalidParameter);
        return nullptr;
    }
    StoreNode* parent = FindOrCreate(*at.parent);
    if (parent == nullptr) return nullptr;
    at.node = parent->Create(at.name, report);
    return at.node.get();
}

bool StoreKey::Read(const char16_t* name, ValueView& value) {
    Begin();
    StoreNode* node = Find(*place);
    return node != nullptr && node->Read(OrEmpty(name), value, report);
}

bool StoreKey::JoinForWriting() {
    Begin();
    if (readOnly) return report.Fail(platform::kAccessDenied);
    return part->Join(report);
}

bool StoreKey::Write(const char16_t* name, const ValueView& value) {
    if (!JoinForWriting()) return false;
    if (value.bytes.size() > kMaxValueSize) return report.Fail(platform::kInvalidParameter);
    StoreNode* node = FindOrCreate(*place);
    return node != nullptr && node->Write(OrEmpty(name), value, report);
}

bool StoreKey::ReadSecurity(const char16_t* name, VSecurityDescriptor& descriptor) {
    return ReadSecurityValue(*this, name, descriptor);
}

bool StoreKey::ReadMultiString(const char16_t* name, VStringArray& strings) {
    ValueView value;
    return Read(name, value) && Succeed(DecodeStrings(value, strings));
}

bool StoreKey::ReadBinary(const char16_t* name, void* buffer, std::uint32_t& size) {
    ValueView value;
    if (!Read(name, value)) return false;
    if (value.tag != ValueTag::kBinary) return report.Fail(platform::kDatatypeMismatch);
    const std::uint32_t room = size;
    size = static_cast<std::uint32_t>(value.bytes.size());
    if (buffer == nullptr) return true;
    if (room < size) return report.Fail(platform::kMoreData);
    std::copy(value.bytes.begin(), value.bytes.end(), static_cast<char*>(buffer));
    return true;
}

bool StoreKey::ReadString(const char16_t* name, VUnicodeString& text) {
    ValueView value;
    return Read(name, value) && Succeed(DecodeText(value, text));
}

bool StoreKey::ReadDword(const char16_t* name, std::uint32_t& value) {
    ValueView stored;
    return Read(name, stored) && Succeed(DecodeDword(stored, value));
}

bool StoreKey::WriteSecurity(const char16_t* name, const VSecurityDescriptor& descriptor) {
    return WriteSecurityValue(*this, name, descriptor);
}

bool StoreKey::WriteMultiString(const char16_t* name, const VStringArray& strings) {
    return Write(name, EncodeStrings(strings, part->GetTree().scratch));
}

bool StoreKey::WriteBinary(const char16_t* name, const void* data, std::uint32_t size) {
    Begin();
    if (data == nullptr && size != 0) return report.Fail(platform::kInvalidParameter);
    return Write(name, {ValueTag::kBinary, std::string_view(static_cast<const char*>(data), size)});
}

bool StoreKey::WriteString(const char16_t* name, const char16_t* text) {
    return Write(name, EncodeText(OrEmpty(text), part->GetTree().scratch));
}

bool StoreKey::WriteDword(const char16_t* name, std::uint32_t value) {
    return Write(name, EncodeDword(value, part->GetTree().scratch));
}

bool StoreKey::CopyValues(IProfileKeyImpl& source) {
    auto* const other = dynamic_cast<StoreKey*>(&source);
    Begin();
    if (other == nullptr || &other->part->GetTree() != &part->GetTree())
        return report.Fail(platform::kInvalidParameter);
    other->Begin();
    StoreNode* const from = other->Find(*other->place);
    if (from == nullptr) {
        report = other->report;
        return false;
    }
    if (!JoinForWriting()) return false;
    StoreNode* const node = FindOrCreate(*place);
    return node != nullptr && node->CopyValues(*from, report);
}

// Both deletions look first: one that finds nothing needs no lock and creates no store.

bool StoreKey::DeleteValue(const char16_t* name) {
    Begin();
    if (readOnly) return report.Fail(platform::kAccessDenied);
    StoreNode* node = Find(*place, true);
    return node != nullptr && JoinForWriting() && node->Erase(OrEmpty(name), report);
}

bool StoreKey::DeleteKey(const char16_t* name) {
    Begin();
    KeyName subkey;
    if (!subkey.Parse(OrEmpty(name), place->depth)) return report.Fail(platform::kInvalidParameter);
    if (readOnly) return report.Fail(platform::kAccessDenied);
    StoreNode* node = Find(*place, true);
    if (node == nullptr || node->Find(subkey, true, report) == nullptr) return false;
    return JoinForWriting() && node->Remove(subkey, report);
}

bool StoreKey::KeyExists(const char16_t* name) {
    Begin();
    StoreNode* node = Find(*place, true);
    if (node == nullptr) return false;
    if (*OrEmpty(name) == u'\0') {
        ChildPage none;  // an empty listing tells whether the key is still there
        return node->List(0, none, report);
    }
    KeyName subkey;
    if (!subkey.Parse(name, place->depth)) return report.Fail(platform::kInvalidParameter);
    return node->Find(subkey, true, report) != nullptr;
}

bool StoreKey::IsWritable() {
    Begin();
    return !readOnly && part->GetTree().IsWritable();
}

bool StoreKey::SetKeySecurity(const VSecurityDescriptor* /*descriptor*/) {
    Begin();
    return report.Fail(platform::kNotSupported);
}

std::shared_ptr<KeyPlace> StoreKey::PlaceBelow(const char16_t* name) const {
    if (*name == u'\0') return place;
    auto below = std::make_shared<KeyPlace>();
    below->parent = place;
    below->validName = place->validName && below->name.Parse(name, place->depth);
    below->depth = place->depth + below->name.levels;
    return below;
}

IProfileKeyImpl* StoreKey::OpenChild(const char16_t* name, std::uint32_t /*reserved*/, std::uint32_t folder) {
    auto child = std::make_unique<StoreKey>(part, PlaceBelow(OrEmpty(name)), readOnly);
    const StoreNode* node = child->Find(*child->place);
    if (node == nullptr && child->report.GetCode() == platform::kFileNotFound && folder != 0) {
        if (child->JoinForWriting()) child->FindOrCreate(*child->place);
    }
    report = child->report;
    return child.release();
}

IProfileIteratorImpl* StoreKey::CreateIterator(bool byKind) {
    return Iterate(byKind ? StoreIterator::Over::kListsAndChildren : StoreIterator::Over::kChildren);
}

IProfileIteratorImpl* StoreKey::CreateFolderIterator() {
    return Iterate(StoreIterator::Over::kFolders);
}

IProfileIteratorImpl* StoreKey::Iterate(StoreIterator::Over over) {
    Begin();
    Find(*place);
    return new StoreIterator(part, place->node, over, report);
}

StoreIterator::StoreIterator(std::shared_ptr<StorePart> part, NodePtr node, Over over, VReportMessageParams& report)
    : part(std::move(part)), node(std::move(node)), over(over), report(report) {
    page.isLast = this->node == nullptr;
    page.skipsSessions = over == Over::kFolders;
    if (over == Over::kListsAndChildren && this->node != nullptr) this->node->ListLists(page.children, report);
    if (page.children.empty()) ReadPage();
}

StoreIterator::~StoreIterator() = default;

void StoreIterator::ReadPage() {
    next = 0;
    page.children.clear();
    if (page.isLast) return;
    if (!node->List(pageSize, page, report)) page.isLast = true;
    pageSize = std::min(pageSize * 2, kMaxPageSize);
}

StoreChild* StoreIterator::Advance() {
    if (next == page.children.size()) ReadPage();
    return next < page.children.size() ? &page.children[next++] : nullptr;
}

bool StoreIterator::NextWithKind(VUnicodeString& name, std::uint32_t& kind) {
    StoreChild* child = Advance();
    if (child == nullptr) return false;
    const bool isEntry = over == Over::kListsAndChildren && child->kind != ProfileKind::kFolder;
    kind = static_cast<std::uint32_t>(isEntry ? ProfileKind::kListEntry : child->kind);
    name = std::move(child->name);
    return true;
}

bool StoreIterator::Next(VUnicodeString& name) {
    std::uint32_t kind = 0;
    return NextWithKind(name, kind);
}

}  // namespace connectdialog::stores
