#include "profile/vregistrykey.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "foundation/byteorder.h"
#include "foundation/venvironment.h"
#include "foundation/vstringarray.h"
#include "platform/lasterror.h"
#include "profile/securityvalue.h"

namespace connectdialog {

namespace {

constexpr std::size_t kExpandedLimit = 32767;

std::u16string_view OrEmpty(const char16_t* text) {
    return text != nullptr ? text : std::u16string_view();
}

/// The whole characters of stored text; a last odd byte is left out.
std::u16string Characters(const VHiveValue& value) {
    std::u16string characters(value.data.size() / 2, u'\0');
    for (std::size_t i = 0; i < characters.size(); ++i) {
        characters[i] = LoadLittleEndian<char16_t>(value.data.data() + 2 * i);
    }
    return characters;
}

void AppendWithTerminator(std::vector<std::uint8_t>& data, std::u16string_view text) {
    const std::size_t start = data.size();
    data.resize(start + (text.size() + 1) * 2);
    for (std::size_t i = 0; i < text.size(); ++i) StoreLittleEndian(text[i], data.data() + start + 2 * i);
}

/// Adds each zero-terminated string; the empty one that ends the text is the end of the list and no string.
void SplitList(std::u16string_view list, VStringArray& strings) {
    while (!list.empty()) {
        const std::size_t length = std::min(list.find(u'\0'), list.size());
        const bool isLast = length + 1 >= list.size();
        if (length == 0 && isLast) return;
        strings.Add(VUnicodeString(list.substr(0, length)));
        list.remove_prefix(isLast ? list.size() : length + 1);
    }
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
    path = PathOf(subkey);
    if (!Conclude(hive->FindKey(path))) hive = nullptr;
}

bool VRegistryKey::ReadSecurity(const char16_t* name, VSecurityDescriptor& descriptor) {
    return ReadSecurityValue(*this, name, descriptor);
}

bool VRegistryKey::ReadMultiString(const char16_t* name, VStringArray& strings) {
    VHiveValue value;
    if (!ReadOfType(name, kHiveMultiString, value)) return false;
    strings.Clear();
    SplitList(Characters(value), strings);
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
    std::u16string characters = Characters(value);
    characters.resize(std::min(characters.find(u'\0'), characters.size()));
    text = value.type == kHiveString ? VUnicodeString(characters) : VExpandVariables(characters, kExpandedLimit);
    return true;
}

bool VRegistryKey::ReadDword(const char16_t* name, std::uint32_t& value) {
    VHiveValue stored;
    if (!ReadOfType(name, kHiveDword, stored)) return false;
    if (stored.data.size() != sizeof(value)) return report.Fail(platform::kInvalidData);
    value = LoadLittleEndian<std::uint32_t>(stored.data.data());
    return true;
}

bool VRegistryKey::WriteSecurity(const char16_t* name, const VSecurityDescriptor& descriptor) {
    return WriteSecurityValue(*this, name, descriptor);
}

bool VRegistryKey::WriteMultiString(const char16_t* name, const VStringArray& strings) {
    std::vector<std::uint8_t> data;
    for (const VUnicodeString& text : strings) AppendWithTerminator(data, text.GetData());
    AppendWithTerminator(data, {});
    return Write(name, kHiveMultiString, std::move(data));
}

bool VRegistryKey::WriteBinary(const char16_t* name, const void* data, std::uint32_t size) {
    if (hive == nullptr) return false;
    if (data == nullptr && size != 0) return report.Fail(platform::kInvalidParameter);
    const auto* bytes = static_cast<const std::uint8_t*>(data);
    return Write(name, kHiveBinary, size != 0 ? std::vector(bytes, bytes + size) : std::vector<std::uint8_t>());
}

bool VRegistryKey::WriteString(const char16_t* name, const char16_t* text) {
    std::vector<std::uint8_t> data;
    AppendWithTerminator(data, OrEmpty(text));
    return Write(name, kHiveString, std::move(data));
}

bool VRegistryKey::WriteDword(const char16_t* name, std::uint32_t value) {
    std::vector<std::uint8_t> data(sizeof(value));
    StoreLittleEndian(value, data.data());
    return Write(name, kHiveDword, std::move(data));
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

bool VRegistryKey::Write(const char16_t* name, std::uint32_t type, std::vector<std::uint8_t> data) {
    return Allows(kRegistrySetValue) && Conclude(hive->WriteValue(path, OrEmpty(name), {type, std::move(data)}));
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
