// Reading the text of a settings hive: the widely known form of a registry export.
//
//   file     = first line, then lines; each ends with CR LF, LF or CR
//   first    = "Windows Registry Editor Version 5.00" | "REGEDIT4"
//   line     = blank | comment | "[" key "]" | "[-" key "]" | name "=" value | name "=-"
//   comment  = ";" anything; may also stand behind any other line
//   key      = root "\" names; the first "]" that ends the line, but for blanks and a comment, ends it
//   name     = "@" (the nameless value) | text
//   text     = characters in double quotes, where \\ stands for \ and \" for "; line breaks are allowed
//   value    = text                          a string
//            | "dword:" 1 to 8 hex digits
//            | "hex:" bytes                  binary
//            | "hex(" type ")": bytes        any other type, in hex: 1 string, 2 with variables, 7 list, b 64 bits...
//   bytes    = two-digit hex numbers between commas; a "\" at the end of a line continues it
//
// [-key] and =- remove what stands above them or what the tree held before. Blanks around words are allowed. The file
// is UTF-16 little-endian with its mark, or UTF-8 with or without. In a REGEDIT4 file the bytes of the text types 1, 2
// and 7 are narrow text; they are converted.
//
// A line that is none of these is told with its number and passed over; a wrong key line takes the values below it with
// it. What is good in a damaged file counts all the same: a typing error does not lift the other policies. Who means to
// write the tree back must not when anything was told, or the wrong lines would be lost.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "foundation/vhivetree.h"

namespace connectdialog {

/// A fault in a hive file. Lines count from 1; the text is English and static.
struct VHiveFault {
    std::size_t line;
    const char16_t* text;
};

/// Puts what the file holds into the tree, on top of what is there; with a root's name, what stands under that root
/// alone. An empty file holds nothing and is no fault. Comments are added to those that the tree has in the same place,
/// unless they end so. Gives the faults, at most the first 100 and then one that says so; none when all was read.
/// `isForeign`, unless null, tells whether the file had keys and all of them stood under another root.
std::vector<VHiveFault> ReadHive(std::string_view bytes, VHiveTree& tree, std::u16string_view onlyRoot = {},
                                 bool* isForeign = nullptr);

}  // namespace connectdialog
