// The character maps of a terminal: tables of 256 codes that users keep in text files.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "foundation/vunicodestring.h"

namespace connectdialog {

/// A map file cannot be used; the insert is its name.
inline constexpr std::uint32_t kReportBadTerminalMap = 0xE137000A;

/// By the byte of a character, the code that it is drawn with; 0 where the file says nothing.
using TerminalMap = std::array<std::uint16_t, 256>;

/// Reads the file that the template names (see foundation/vfiletemplate.h): one hexadecimal number a line, as strtoul
/// reads it, for the entries from 0 on. Empty lines do not count. A line without a number, with a negative one or with
/// one of more than 16 bits leaves its entry 0. What follows the 256th line is not read.
/// On failure: null, and the router is told with kReportBadTerminalMap. A file of more than 4 MiB is none.
std::shared_ptr<const TerminalMap> ReadTerminalMap(const VUnicodeString& fileTemplate);

}  // namespace connectdialog
