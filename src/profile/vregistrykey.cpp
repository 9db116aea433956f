#include "profile/vregistrykey.h"

#include <cstring>
#include <string_view>

#include "foundation/venvironment.h"
#include "foundation/vstringarray.h"
#include "platform/lasterror.h"
#include "profile/securityvalue.h"

namespace connectdialog {

namespace {

/// Room for whatever a hive can hold; what its variables come to beyond that is no setting.
constexpr std::size_t kExpandedLimit = VSettingsHive::kMaxBytes / 2;

std::u16string_view OrEmpty(const char16_t* text) {
    return text != nullptr ? text : std::u16string_view();
}

}  // namespace

VRegistryKey::VRegistryKey(HiveScope parent, const char16_t* subkey, std::uint32_t access)
    : hive(&VSettingsHive::Of(parent)), access(access) {
    Open(subkey);
}

VRegistryKey::VRegistryKey(const VRegistryKey& parent, const char16_t* subkey, std::uint32_t access)
    : hive(parent.hive), path(parent.path), access(access) {
    if (hive == nullptr) {
        report.Fail(platform::kInvalidHandle);
        return;
    }
    Open(subkey);
}

void VRegistryKey::Open(const char16_t* subkey) {
    constexpr std::uint32_t kWriting = kRegistrySetValue | kRegistryCreateSubkey;
    path = PathOf(subkey);
    VHiveStatus status = hive->FindKey(path);
    if (status && (access & kWriting) != 0) status = hive->CanWrite();
    if (!Conclude(status)) hive = nullptr;
}

bool VRegistryKey::ReadSecurity(const char16_t* name, VSecurityDescriptor& descriptor) {
    return ReadSecurityValue(*this, name, descriptor);
}

bool VRegistryKey::ReadMultiString(const char16_t* name, VStringArray& strings) {
    VHiveValue value;
    if (!ReadOfType(name, kHiveMultiString, value)) return false;
    strings.Clear();
    value.AddTextsTo(strings);
    return true;
}

bool VRegistryKey::ReadBinary(const char16_t* name, void* buffer, std::uint32_t& size) {
    VHiveValue value;
    if (!ReadOfType(name, kHiveBinary, value)) return false;
    const bool hasRoom = buffer == nullptr || size >= value.data.size();
    size = static_cast<std::uint32_t>(value.data.size());
    if (!hasRoom) return report.Fail(platform::kMoreData);
    if (buffer != nullptr && size > 0) std::memcpy(buffer, value.data.data(), size);
    return true;
}

bool VRegistryKey::ReadString(const char16_t* name, VUnicodeString& text) {
    VHiveValue value;
    if (!Read(name, value)) return false;
    if (value.type != kHiveString && value.type != kHiveExpandString) return report.Fail(platform::kDatatypeMismatch);
    VUnicodeString found(value.GetText());
    if (value.type == kHiveExpandString) found = VExpandVariables(found.View(), kExpandedLimit + 1);
    if (found.GetLength() > kExpandedLimit) return report.Fail(platform::kMoreData);
    text = found;
    return true;
}

bool VRegistryKey::ReadDword(const char16_t* name, std::uint32_t& value) {
    VHiveValue stored;
    if (!ReadOfType(name, kHiveDword, stored)) return false;
    return stored.GetDword(value) || report.Fail(platform::kInvalidData);
}

bool VRegistryKey::WriteSecurity(const char16_t* name, const VSecurityDescriptor& descriptor) {
    return WriteSecurityValue(*this, name, descriptor);
}

bool VRegistryKey::WriteMultiString(const char16_t* name, const VStringArray& strings) {
    return Write(name, VHiveValue::OfList(strings));
}

bool VRegistryKey::WriteBinary(const char16_t* name, const void* data, std::uint32_t size) {
    if (hive == nullptr) return false;
    if (data == nullptr && size != 0) return report.Fail(platform::kInvalidParameter);
    const auto* bytes = static_cast<const std::uint8_t*>(data);
    return Write(name, {kHiveBinary, size != 0 ? std::vector(bytes, bytes + size) : std::vector<std::uint8_t>()});
}

bool VRegistryKey::WriteString(const char16_t* name, const char16_t* text) {
    return Write(name, VHiveValue::OfText(kHiveString, OrEmpty(text)));
}

bool VRegistryKey::WriteDword(const char16_t* name, std::uint32_t value) {
    return Write(name, VHiveValue::OfDword(value));
}

bool VRegistryKey::DeleteValue(const char16_t* name) {
    return Allows(kRegistrySetValue) && Conclude(hive->DeleteValue(path, OrEmpty(name)));
}

bool VRegistryKey::DeleteKey(const char16_t* subkey) {
    if (hive == nullptr) return false;
    if (OrEmpty(subkey).empty()) return report.Fail(platform::kInvalidParameter);
    return Conclude(hive->DeleteKey(PathOf(subkey)));
}

bool VRegistryKey::KeyExists(const char16_t* subkey) {
    return hive != nullptr && hive->FindKey(PathOf(subkey));
}

bool VRegistryKey::IsWritable() const {
    constexpr std::uint32_t kNeeded = kRegistrySetValue | kRegistryCreateSubkey;
    return (access & kNeeded) == kNeeded;
}

bool VRegistryKey::SetKeySecurity(const VSecurityDescriptor* descriptor) {
    if (hive == nullptr) return false;
    report.Clear();
    return descriptor == nullptr || report.Fail(platform::kNotSupported);
}

bool VRegistryKey::Allows(std::uint32_t needed) {
    if (hive == nullptr) return false;
    return (access & needed) == needed || report.Fail(platform::kAccessDenied);
}

bool VRegistryKey::Read(const char16_t* name, VHiveValue& value) {
    return Allows(kRegistryQueryValue) && Conclude(hive->ReadValue(path, OrEmpty(name), value));
}

bool VRegistryKey::ReadOfType(const char16_t* name, std::uint32_t type, VHiveValue& value) {
    if (!Read(name, value)) return false;
    return value.type == type || report.Fail(platform::kDatatypeMismatch);
}

bool VRegistryKey::Write(const char16_t* name, VHiveValue value) {
    return Allows(kRegistrySetValue) && Conclude(hive->WriteValue(path, OrEmpty(name), std::move(value)));
}

bool VRegistryKey::Conclude(const VHiveStatus& status) {
    report.Clear();
    return status || report.Fail(status.code, status.detail.empty() ? nullptr : status.detail.c_str());
}

std::u16string VRegistryKey::PathOf(const char16_t* subkey) const {
    const std::u16string_view name = OrEmpty(subkey);
    if (path.empty() || name.empty()) return name.empty() ? path : std::u16string(name);
    return path + u'\\' + std::u16string(name);
}

VRegistryKeyEnumerator::VRegistryKeyEnumerator(VRegistryKey& key) {
    if (key.Allows(kRegistryEnumerateSubkeys)) key.Conclude(key.hive->ListKeys(key.path, names));
    remaining = names.size();
}

bool VRegistryKeyEnumerator::Next(VUnicodeString& name) {
    if (remaining == 0) return false;
    name = names[--remaining];
    return true;
}

}  // namespace connectdialog
