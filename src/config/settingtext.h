// A setting as the text that a user reads and types: one way for every program and dialog.
#pragma once

#include <cstdint>
#include <string_view>

#include "foundation/vunicodestring.h"

namespace connectdialog {

class VProfileData;

/// kList is several texts, kRecord a value of several fields: a font, a window's place, the margins of a page.
enum class SettingType : std::uint8_t { kBool, kTriState, kInt16, kUint16, kInt32, kUint32, kText, kList, kRecord };
SettingType GetTypeOf(VProfileData& setting);

/// Whether the value is a text that is stored in another form than its own: one that must not be read at a glance.
bool IsSecretSetting(VProfileData& setting);

/// Where the numbers of the setting's type lie. False, and both stay, where it is no number.
bool GetNumberLimits(VProfileData& setting, std::int64_t& least, std::int64_t& most);

/// The current value. By its type: `true`, `false`; `off`, `on`, `global`; a decimal number; the text itself, in its
/// state; a list with a line feed between its texts; the fields of a record with commas between them, the face of a
/// font as the last. False, and empty, for a record that is none of the known ones.
bool ReadSettingText(VProfileData& setting, VUnicodeString& text);

/// Sets the current value from such a text; a bool also from `yes`, `no`, `on`, `off`, `1`, `0`; words in any case.
/// On failure: false for a text that is no such value, and the value stays.
bool WriteSettingText(VProfileData& setting, std::u16string_view text);

}  // namespace connectdialog
