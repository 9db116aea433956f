#include "foundation/vsettingshive.h"

#include "platform/lasterror.h"

namespace connectdialog {

VSettingsHive& VSettingsHive::Of(HiveScope scope) {
    static VSettingsHive machine;
    static VSettingsHive user;
    return scope == HiveScope::kMachine ? machine : user;
}

VHiveStatus VSettingsHive::FindKey(std::u16string_view /*key*/) {
    return {platform::kFileNotFound};
}

VHiveStatus VSettingsHive::ReadValue(std::u16string_view /*key*/, std::u16string_view /*name*/, VHiveValue& /*value*/) {
    return {platform::kFileNotFound};
}

}  // namespace connectdialog
