#include "foundation/vpolicies.h"

#include <optional>
#include <string_view>

#include "foundation/casefold.h"
#include "foundation/vsettingshive.h"

namespace connectdialog {

namespace {

constexpr std::u16string_view kVendorRoot = u"SOFTWARE\\Brennmark";
constexpr std::u16string_view kFormerVendorRoot = u"SOFTWARE\\Brennmark Works";
constexpr std::u16string_view kPolicyKey = u"Software\\Policies\\Brennmark";
constexpr std::u16string_view kGlobalKey = u"SOFTWARE\\Brennmark\\Global";
constexpr std::u16string_view kFormerVersion = u" 3.0";
constexpr std::u16string_view kOlderTerminal = u"Halden";
constexpr std::u16string_view kTerminal = u"NorHalden";
constexpr std::u16string_view kTransfer = u"Tessaly";

struct PolicyCache {
    std::optional<bool> canSaveUsernames;
    std::optional<bool> canSavePasswords;
};
PolicyCache cache;

std::u16string_view OrEmpty(const char16_t* text) {
    return text != nullptr ? text : std::u16string_view();
}

VUnicodeString Below(std::u16string_view root, std::u16string_view name) {
    VUnicodeString key(root);
    key += u'\\';
    key += name;
    return key;
}

bool BeginsWithNoCase(std::u16string_view text, std::u16string_view beginning) {
    return EqualsNoCase(text.substr(0, beginning.size()), beginning);
}

bool ReadDword(HiveScope scope, std::u16string_view key, std::u16string_view name, std::uint32_t& value) {
    VHiveValue found;
    if (!VSettingsHive::Of(scope).ReadValue(key, name, found)) return false;
    return found.type == kHiveDword && found.GetDword(value);
}

bool DecideSavePasswords(const char16_t* product, const char16_t* secondary) {
    if (!BeginsWithNoCase(OrEmpty(product), kTransfer)) return VIsPolicyEnabled(u"Save Passwords", product, secondary);
    std::uint32_t value = 0;
    if (VGetPolicyDword(u"Save Passwords", value)) return value != 0;
    return !VGetProductDword(u"Disable Passwords", product, secondary, value) || value == 0;
}

}  // namespace

VUnicodeString VGetVendorRoot() {
    return kVendorRoot;
}

VUnicodeString VGetProductRoot(const char16_t* product) {
    const std::u16string_view name = OrEmpty(product);
    VUnicodeString former = Below(kFormerVendorRoot, name);
    if (name.find(kOlderTerminal) != name.npos) former += kFormerVersion;
    const VUnicodeString candidates[] = {Below(kVendorRoot, name), former};
    for (const HiveScope scope : {HiveScope::kMachine, HiveScope::kUser}) {
        for (const VUnicodeString& key : candidates) {
            if (VSettingsHive::Of(scope).FindKey(key.View())) return key;
        }
    }
    return candidates[0];
}

bool VGetPolicyDword(const char16_t* name, std::uint32_t& value) {
    const std::u16string_view policy = OrEmpty(name);
    return ReadDword(HiveScope::kMachine, kPolicyKey, policy, value) ||
           ReadDword(HiveScope::kUser, kPolicyKey, policy, value) ||
           ReadDword(HiveScope::kMachine, kGlobalKey, policy, value);
}

bool VGetProductDword(const char16_t* name, const char16_t* product, const char16_t* secondary, std::uint32_t& value) {
    const std::u16string_view first = OrEmpty(product);
    const std::u16string_view second = OrEmpty(secondary);
    if (first.empty() || second.empty()) return false;
    const std::u16string_view setting = OrEmpty(name);
    if (ReadDword(HiveScope::kMachine, Below(kVendorRoot, first).View(), setting, value)) return true;
    const bool older = BeginsWithNoCase(first, kOlderTerminal);
    if (!older && !BeginsWithNoCase(first, kTerminal)) return false;
    VUnicodeString former = Below(kFormerVendorRoot, second);
    if (older) former += kFormerVersion;
    return ReadDword(HiveScope::kMachine, former.View(), setting, value);
}

bool VIsPolicyEnabled(const char16_t* name, const char16_t* product, const char16_t* secondary) {
    std::uint32_t value = 1;
    if (!VGetPolicyDword(name, value)) VGetProductDword(name, product, secondary, value);
    return value != 0;
}

bool VCanSaveUsernames(const char16_t* product, const char16_t* secondary) {
    std::optional<bool>& answer = cache.canSaveUsernames;
    if (!answer) answer = VIsPolicyEnabled(u"Save Usernames", product, secondary);
    return *answer;
}

bool VCanSavePasswords(const char16_t* product, const char16_t* secondary) {
    if (!VCanSaveUsernames(product, secondary)) return false;
    std::optional<bool>& answer = cache.canSavePasswords;
    if (!answer) answer = DecideSavePasswords(product, secondary);
    return *answer;
}

void VForgetPolicies() {
    cache = {};
}

}  // namespace connectdialog
