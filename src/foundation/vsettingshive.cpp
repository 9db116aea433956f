#include "foundation/vsettingshive.h"

#include <memory>

#include "foundation/vhivewriter.h"
#include "foundation/vunicodestring.h"
#include "platform/codepage.h"
#include "platform/lasterror.h"
#include "platform/paths.h"

namespace connectdialog {

namespace {

/// The two hives of the process, made when they are first asked for.
std::unique_ptr<VSettingsHive> machineHive;
std::unique_ptr<VSettingsHive> userHive;

std::u16string_view RootName(HiveScope scope) {
    return scope == HiveScope::kMachine ? u"HKEY_LOCAL_MACHINE" : u"HKEY_CURRENT_USER";
}

std::unique_ptr<VSettingsHive> MakeHive(HiveScope scope, std::u16string path) {
    if (path.empty()) path = platform::GetHivePath(scope);
    return std::make_unique<VSettingsHive>(scope, std::move(path));
}

bool IsAbsent(std::uint32_t error) {
    return error == platform::kFileNotFound || error == platform::kPathNotFound;
}

std::u16string Describe(const VHiveFault& fault) {
    VUnicodeString text;
    text.Format(u"line %1!u!: %2", static_cast<std::uint32_t>(fault.line), fault.text);
    return std::u16string(text.View());
}

VHiveStatus Put(VHiveKey& key, std::u16string_view name, VHiveValue value) {
    if (name.size() > VHiveTree::kMaxValueName || !IsFitForHive(name)) return {platform::kInvalidParameter, {}};
    key.values[std::u16string(name)].value = std::move(value);
    return {};
}

/// A path as the user knows it.
std::u16string NativeText(std::u16string_view path) {
    return platform::ToWide(platform::ToNativePath(path));
}

}  // namespace

VSettingsHive& VSettingsHive::Of(HiveScope scope) {
    std::unique_ptr<VSettingsHive>& hive = scope == HiveScope::kMachine ? machineHive : userHive;
    if (hive == nullptr) hive = MakeHive(scope, {});
    return *hive;
}

void VSettingsHive::SetPaths(std::u16string machinePath, std::u16string userPath) {
    machineHive = MakeHive(HiveScope::kMachine, std::move(machinePath));
    userHive = MakeHive(HiveScope::kUser, std::move(userPath));
}

VSettingsHive::VSettingsHive(HiveScope scope, std::u16string path) : scope(scope), path(std::move(path)) {}

VHiveStatus VSettingsHive::FindKey(std::u16string_view key) {
    Refresh();
    if (fileError != 0) return FileStatus();
    return key.empty() || tree.Find(FullPath(key)) != nullptr ? VHiveStatus() : Absence(platform::kFileNotFound);
}

VHiveStatus VSettingsHive::ReadValue(std::u16string_view key, std::u16string_view name, VHiveValue& value) {
    Refresh();
    if (fileError != 0) return FileStatus();
    const VHiveKey* found = tree.Find(FullPath(key));
    if (found == nullptr) return Absence(key.empty() ? platform::kFileNotFound : platform::kKeyDeleted);
    const auto entry = found->values.find(name);
    if (entry == found->values.end()) return Absence(platform::kFileNotFound);
    value = entry->second.value;
    return {};
}

VHiveStatus VSettingsHive::ListKeys(std::u16string_view key, std::vector<std::u16string>& names) {
    Refresh();
    if (fileError != 0) return FileStatus();
    const VHiveKey* found = tree.Find(FullPath(key));
    if (found == nullptr && !key.empty()) return Absence(platform::kKeyDeleted);
    names.clear();
    if (found == nullptr) return {};
    for (const auto& [name, child] : found->children) names.push_back(name);
    return {};
}

VHiveStatus VSettingsHive::CanWrite() const {
    return platform::CanReplaceHive(path) ? VHiveStatus() : Failed(platform::GetLastErrorCode());
}

VHiveStatus VSettingsHive::CreateKey(std::u16string_view key) {
    return Update([&](VHiveTree& changed) -> VHiveStatus {
        if (changed.Create(FullPath(key)) == nullptr) return {platform::kInvalidParameter, {}};
        return {};
    });
}

VHiveStatus VSettingsHive::WriteValue(std::u16string_view key, std::u16string_view name, VHiveValue value) {
    return Update([&](VHiveTree& changed) -> VHiveStatus {
        VHiveKey* found = key.empty() ? changed.Create(FullPath(key)) : changed.Find(FullPath(key));
        return found != nullptr ? Put(*found, name, std::move(value)) : VHiveStatus{platform::kKeyDeleted, {}};
    });
}

VHiveStatus VSettingsHive::WriteValueAndKey(std::u16string_view key, std::u16string_view name, VHiveValue value) {
    return Update([&](VHiveTree& changed) -> VHiveStatus {
        VHiveKey* made = changed.Create(FullPath(key));
        return made != nullptr ? Put(*made, name, std::move(value)) : VHiveStatus{platform::kInvalidParameter, {}};
    });
}

VHiveStatus VSettingsHive::DeleteValue(std::u16string_view key, std::u16string_view name) {
    return Update([&](VHiveTree& changed) -> VHiveStatus {
        VHiveKey* found = changed.Find(FullPath(key));
        if (found == nullptr) return {key.empty() ? platform::kFileNotFound : platform::kKeyDeleted, {}};
        const auto entry = found->values.find(name);
        if (entry == found->values.end()) return {platform::kFileNotFound, {}};
        found->values.erase(entry);
        return {};
    });
}

VHiveStatus VSettingsHive::DeleteKey(std::u16string_view key) {
    if (key.empty()) return {platform::kAccessDenied, {}};
    return Update([&](VHiveTree& changed) -> VHiveStatus {
        if (!changed.Remove(FullPath(key))) return {platform::kFileNotFound, {}};
        return {};
    });
}

VHiveStatus VSettingsHive::Import(std::string_view bytes) {
    if (bytes.size() > kMaxBytes) return {platform::kFileTooLarge, {}};
    return Update([&](VHiveTree& changed) -> VHiveStatus {
        bool isForeign = false;
        const std::vector<VHiveFault> found = ReadHive(bytes, changed, RootName(scope), &isForeign);
        if (!found.empty()) return {platform::kInvalidData, Describe(found.front())};
        if (isForeign) return {platform::kFileNotFound, u"no key in the file begins with " + FullPath({})};
        return {};
    });
}

VHiveStatus VSettingsHive::Update(const std::function<VHiveStatus(VHiveTree&)>& change) {
    platform::HiveLock lock(scope, path);
    if (!lock.IsHeld()) return Failed(platform::GetLastErrorCode());
    Load();
    VHiveStatus status = FileStatus();
    if (!status) return status;
    status = change(tree);
    if (status) {
        const std::string bytes = WriteHive(tree);
        if (bytes.size() > kMaxBytes) {
            status = Failed(platform::kFileTooLarge);
        } else if (!lock.Replace(bytes)) {
            status = Failed(platform::GetLastErrorCode());
        }
    }
    Forget();
    return status;
}

std::u16string VSettingsHive::FullPath(std::u16string_view key) const {
    std::u16string full(RootName(scope));
    if (!key.empty()) full.append(u"\\").append(key);
    return full;
}

const VHiveTree& VSettingsHive::Tree() {
    Refresh();
    return tree;
}

VHiveStatus VSettingsHive::Health() {
    Refresh();
    return FileStatus();
}

void VSettingsHive::Refresh() {
    platform::HiveStamp current = {};
    const bool isThere = platform::GetHiveStamp(path, current);
    if (!isThere || current != stamp) Load();
}

void VSettingsHive::Load() {
    Forget();
    std::string bytes;
    if (platform::ReadHiveFile(path, kMaxBytes, bytes, stamp)) {
        faults = ReadHive(bytes, tree);
    } else if (const std::uint32_t error = platform::GetLastErrorCode(); !IsAbsent(error)) {
        fileError = error;
    }
}

void VSettingsHive::Forget() {
    tree = VHiveTree();
    faults.clear();
    fileError = 0;
    stamp = {};
}

VHiveStatus VSettingsHive::FileStatus() const {
    if (fileError != 0) return Failed(fileError);
    if (faults.empty()) return {};
    return {platform::kStoreCorrupt, NativeText(path) + u", " + Describe(faults.front())};
}

VHiveStatus VSettingsHive::Absence(std::uint32_t code) const {
    return faults.empty() ? VHiveStatus{code, {}} : FileStatus();
}

VHiveStatus VSettingsHive::Failed(std::uint32_t code) const {
    return {code, NativeText(path)};
}

}  // namespace connectdialog
