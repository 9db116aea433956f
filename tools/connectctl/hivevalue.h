// A value of a settings hive in words: its type and its text, and the way back.
//
//   string   the text, unsafe characters escaped
//   dword    decimal; hexadecimal behind 0x is read too
//   binary   two hexadecimal digits a byte
//   list     a JSON array of texts
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "tools/connectctl/command.h"

namespace connectdialog {
class VRegistryKey;
}

namespace connectdialog::connectctl {

std::string HexText(const std::vector<std::uint8_t>& bytes);

/// Reads a value of whatever type. False with the key's report.
bool ReadHiveValue(VRegistryKey& key, const char16_t* name, std::string& type, std::string& text);

/// Writes a value under a name. False with the key's report.
using HiveWriter = std::function<bool(VRegistryKey& key, const char16_t* name)>;
/// Makes the writer of a value from its type and text. Fails when the text is no value of the type.
Failure ParseHiveValue(const std::string& type, const std::string& text, HiveWriter& write);

}  // namespace connectdialog::connectctl
