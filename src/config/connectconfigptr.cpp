#include "config/connectconfigptr.h"

#include <new>

#include "imports/configpanels.h"
#include "profile/vprofilekey.h"

namespace connectdialog {

namespace {
/// Dials as soon as it is made ready: made only when it is selected.
constexpr std::u16string_view kTapi = u"TAPI";
}  // namespace

VUnicodeString GetProtocolNameValue(ProtocolSide side) {
    return side == ProtocolSide::kTerminal ? u"Protocol Name"_v : u"Transfer Protocol Name"_v;
}

bool IsRowOfSide(const ConnectProtocolTableElement& row, ProtocolSide side) {
    if (side == ProtocolSide::kTransfer) return row.kind == AppKind::kTessaly;
    return row.kind == AppKind::kNorHalden || row.kind == AppKind::kHalden;
}

ConnectConfigPtr::ConnectConfigPtr(VProfileKey* key, ProtocolSide side, ICommonConfig* common)
    : table(GetConnectProtocolTable()), configs(table.GetCount()), common(common), side(side) {
    std::int32_t named = LoadName(key);
    for (std::uint64_t i = 0; i < table.GetCount(); ++i) configs.Add(nullptr);
    const std::int32_t first = FindFirstRow();
    if (first == kNone) return;
    if (name.Get().IsEmpty()) {
        named = first;
        name.Set(table[static_cast<std::uint64_t>(first)].name);
    }
    if (named != kNone) CreateConfig(static_cast<std::uint64_t>(named), key, common);
    selected = named;
    bool isShared = GetSelected() != nullptr && table[static_cast<std::uint64_t>(selected)].sharesSettings;
    for (std::uint64_t i = 0; i < table.GetCount(); ++i) {
        if (configs[i] || !IsKeptReady(i) || (isShared && table[i].sharesSettings)) continue;
        CreateConfig(i, key, common);
        isShared = isShared || (configs[i] && table[i].sharesSettings);
    }
}

ConnectConfigPtr::ConnectConfigPtr(const ConnectConfigPtr& other, ICommonConfig* common)
    : VProfileData(other),
      table(other.table),
      name(other.name),
      selected(other.selected),
      storedSelected(other.storedSelected),
      configs(other.configs.GetCount()),
      common(common),
      side(other.side),
      nameWasEmpty(other.nameWasEmpty) {
    for (const VRef<ConnectConfig>& config : other.configs) {
        VRef<ConnectConfig> copy;
        if (config) copy = VRef<ConnectConfig>::Adopt(config->Clone(common));
        if (config && !copy) throw std::bad_alloc();
        configs.Add(std::move(copy));
    }
}

std::int32_t ConnectConfigPtr::FindFirstRow() const {
    for (std::uint64_t i = 0; i < table.GetCount(); ++i)
        if (IsRowOfSide(table[i], side)) return static_cast<std::int32_t>(i);
    return kNone;
}

/// The row of the name, the last one where several have it; a name that is none of its side's is dropped.
std::int32_t ConnectConfigPtr::LoadName(VProfileKey* key) {
    const VUnicodeString valueName = GetProtocolNameValue(side);
    SetName(valueName);
    name.Load(key, valueName, VUnicodeString());
    SetMissing(name.IsMissing());
    nameWasEmpty = !name.IsMissing() && name.Get().IsEmpty();

    for (std::uint64_t i = table.GetCount(); i-- > 0;)
        if (IsRowOfSide(table[i], side) && table[i].name.EqualsNoCase(name.Get())) return static_cast<std::int32_t>(i);
    if (!name.Get().EqualsNoCase(kNoProtocol)) name.Edit().Empty();
    return kNone;
}

void ConnectConfigPtr::CreateConfig(std::uint64_t row, VProfileKey* key, ICommonConfig* with) {
    const ConnectProtocolTableElement& element = table[row];
    if (element.createConfig == nullptr) return;
    configs[row] = VRef<ConnectConfig>::Adopt(element.createConfig(key, with, element));
    if (configs[row]) configs[row]->Commit();
}

bool ConnectConfigPtr::IsKeptReady(std::uint64_t row) const {
    const ConnectProtocolTableElement& element = table[row];
    return IsRowOfSide(element, side) && !element.name.EqualsNoCase(kTapi);
}

void ConnectConfigPtr::MakeIfWaiting(std::uint64_t row) {
    const bool waits = !configs[row] && IsKeptReady(row) && table[row].sharesSettings;
    if (waits) CreateConfig(row, nullptr, common);
}

ConnectConfig* ConnectConfigPtr::GetSelected() const {
    return selected == kNone ? nullptr : configs[static_cast<std::uint64_t>(selected)].Get();
}

void ConnectConfigPtr::SetProtocol(const VUnicodeString& newName, ICommonConfig* with, bool carryOver) {
    if (name.Get() == newName) return;
    name.Set(newName);
    if (carryOver && GetSelected() != nullptr) GetSelected()->ExportShared(carried);
    selected = kNone;

    std::uint64_t row = 0;
    while (row < table.GetCount() && table[row].name != newName) ++row;
    if (row == table.GetCount()) return;
    selected = static_cast<std::int32_t>(row);
    MakeIfWaiting(row);
    if (!configs[row]) CreateConfig(row, nullptr, with);
    if (carryOver && configs[row]) configs[row]->ImportShared(carried);
}

void ConnectConfigPtr::Save(VProfileKey& key, bool force) {
    name.Save(key, force);
    if (selected == kNone || name.Get().View() == kNoProtocol) return;
    if (ConnectConfig* config = GetSelected()) config->Save(key, force);
    SetMissing(false);
}

bool ConnectConfigPtr::IsChanged() const {
    if (selected == kNone) return false;
    return name.IsChanged() || (GetSelected() != nullptr && GetSelected()->IsChanged());
}

void ConnectConfigPtr::Commit() {
    name.Commit();
    storedSelected = selected;
    bool missing = name.IsMissing();
    for (std::uint64_t i = 0; i < configs.GetCount(); ++i) {
        MakeIfWaiting(i);
        if (!configs[i]) continue;
        configs[i]->Commit();
        missing = missing || configs[i]->IsMissing();
    }
    if (missing) SetMissing(true);
}

void ConnectConfigPtr::Revert() {
    name.Revert();
    selected = storedSelected;
    for (const VRef<ConnectConfig>& config : configs)
        if (config) config->Revert();
}

void ConnectConfigPtr::Assign(const VProfileData& other) {
    const auto* source = dynamic_cast<const ConnectConfigPtr*>(&other);
    if (source == nullptr) return;
    for (std::uint64_t i = 0; i < configs.GetCount(); ++i) {
        if (!source->configs[i]) continue;
        MakeIfWaiting(i);
        if (configs[i]) configs[i]->Assign(*source->configs[i]);
    }
    if (source->selected == source->storedSelected || source->selected == kNone) return;
    SetProtocol(table[static_cast<std::uint64_t>(source->selected)].name, nullptr, false);
}

}  // namespace connectdialog
