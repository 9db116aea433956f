// A value of a settings hive in words: its type and its text, and the way back.
//
//   string   the text, unsafe characters escaped
//   expand   a text in which %NAME% stands for a variable when a program reads it; as it is stored, not replaced
//   dword    decimal; hexadecimal behind 0x is read too
//   binary   two hexadecimal digits a byte
//   list     a JSON array of texts
//   hex(N)   any other type, by its number, and a dword that is not four bytes; like binary. Only shown.
#pragma once

#include <string>

#include "foundation/vhivevalue.h"
#include "tools/connectctl/command.h"

namespace connectdialog::connectctl {

/// Any value has its type and text.
void DescribeHiveValue(const VHiveValue& value, std::string& type, std::string& text);

/// Fails when the text is no value of the type. A text of an unknown type is a string.
Failure ParseHiveValue(const std::string& type, const std::string& text, VHiveValue& value);

}  // namespace connectdialog::connectctl
