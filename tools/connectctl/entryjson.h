// Sessions and folders as JSON, for export and import.
//
// A file is one object:
//
//   {"format": "connectdialog entries", "version": 1, "entries": [
//     {"path": "Web", "type": "folder", "expanded": true},
//     {"path": "Web\\alpha", "type": "session", "values": {"Hostname": "alpha.example.net", "Port": 22}}]}
//
// Entries stand in the order of the user, folders before what is in them; paths begin below the folder that holds what
// was exported, and the empty path is the root. A value is a number (a dword), a text, an array of texts or
// {"hex": "0aff"} (bytes). A text that JSON cannot hold, because of half a character in it, is {"utf16": "d83d0041"}.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "tools/connectctl/command.h"

namespace connectdialog {
class VProfileKey;
class VUnicodeString;
}  // namespace connectdialog

namespace connectdialog::connectctl {

inline constexpr char kEntriesFormat[] = "connectdialog entries";
inline constexpr int kEntriesVersion = 1;

nlohmann::json ExactTextToJson(std::u16string_view text);
/// False when `value` is no text, or one that a store cannot hold: with a zero in it.
bool ExactTextFromJson(const nlohmann::json& value, VUnicodeString& text);

/// The values of the session at `path` in the form in which the store keeps them: all that a save of it would write,
/// and of the protocols that are not selected what its key holds. Secrets (enciphered as in the store) only
/// `withSecrets`. Fails for a session that cannot be read.
Failure ValuesToJson(const VUnicodeString& path, bool withSecrets, nlohmann::json& values);

/// Writes the values to a new session's key; `path` is the session's. Fails, with the value's name, for what is no
/// value and for a value that the session would correct when it is loaded.
Failure ValuesFromJson(const nlohmann::json& values, VProfileKey& key, const VUnicodeString& path);

}  // namespace connectdialog::connectctl
