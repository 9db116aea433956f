// A setting in words: its type, its value as text and as JSON, and the way back.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

#include "tools/connectctl/command.h"

namespace connectdialog {
class VProfileData;
}

namespace connectdialog::connectctl {

/// How a secret is shown.
inline constexpr char kHidden[] = "(hidden)";

/// "bool", "tri-state", "int16", "uint16", "int32", "uint32", "text", "list", or "record" for a value of several
/// fields.
const char* GetSettingType(VProfileData& setting);
/// What a value of its type may be, for messages and help.
std::string GetSettingRange(VProfileData& setting);

/// A bool, a number, a text ("off", "on", "global" for a tri-state), an array of texts, an object for a record. Secrets
/// are given as they are.
nlohmann::json GetSettingJson(VProfileData& setting);
/// An object of name, type and value; a secret has "hidden" in the place of the value.
nlohmann::json SettingAsJson(VProfileData& setting);
/// The value on one line for the user: a text as it stands with unsafe characters escaped, a list as a JSON array, a
/// record as a JSON object, a secret as a word in parentheses.
std::string GetSettingText(VProfileData& setting);

/// Name, type and text with a tab between them: a setting on one line.
std::string DescribeSetting(VProfileData& setting);

/// Sets the current value from what a user typed: true/false/yes/no/on/off/1/0; off/on/global; a decimal number; a
/// text; a list as a JSON array of texts or as one text a line.
/// Fails, and the value stays, when the text is no such value: told with name, type and range.
Failure SetSettingText(VProfileData& setting, std::u16string_view text);

}  // namespace connectdialog::connectctl
