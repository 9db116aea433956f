// The settings of the machine and of the user that stand beside the profile store: policies and product roots.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/settingshives.h"

namespace connectdialog {

using platform::HiveScope;

/// Types of values with a meaning to the library; a hive may hold others.
enum HiveValueType : std::uint32_t {
    kHiveString = 1,
    kHiveExpandString = 2,
    kHiveBinary = 3,
    kHiveDword = 4,
    kHiveMultiString = 7,
};

/// A value as it is stored: text as UTF-16 little-endian with its terminator, a dword as four bytes, low byte first.
struct VHiveValue {
    std::uint32_t type = 0;
    std::vector<std::uint8_t> data;
};

/// How an operation ended.
struct VHiveStatus {
    /// 0 after success, 2 for an absent key or value; otherwise as the operation tells.
    std::uint32_t code = 0;
    explicit operator bool() const { return code == 0; }
};

/// One hive. Key names are levels joined by `\`.
class VSettingsHive {
  public:
    /// The hive of the machine or of the user.
    static VSettingsHive& Of(HiveScope scope);

    /// Whether the key is there.
    VHiveStatus FindKey(std::u16string_view key);
    /// On failure: `value` stays.
    VHiveStatus ReadValue(std::u16string_view key, std::u16string_view name, VHiveValue& value);
};

}  // namespace connectdialog
