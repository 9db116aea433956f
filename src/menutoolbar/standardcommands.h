// The commands of menus and toolbars where a host has no table of its own.
#pragma once

#include "menutoolbar/vmenuresourcedata.h"

namespace connectdialog {

/// The numbers of the commands that keys can have too begin here: this plus the number of the function of keys.
inline constexpr std::uint32_t kFirstKeyFunctionCommand = 256;

/// SEND, RUN, OPEN_SESSION, OPEN_SESSION_TAB, and by their names the functions of keys from SB_LINE_UP on. The bitmap
/// index of a command is its place in this table.
const VMenuResourceData& GetStandardMenuCommands();

}  // namespace connectdialog
