// The commands of menus and toolbars where a host has no table of its own.
#pragma once

#include "menutoolbar/vmenuresourcedata.h"

namespace connectdialog {

/// The numbers of the commands that keys can have too begin here: this plus the number of the function of keys.
inline constexpr std::uint32_t kFirstKeyFunctionCommand = 256;

// What a host has beside the functions of keys.
inline constexpr std::uint32_t kMenuNewSession = 1024;   ///< MENU_NEW_SESSION
inline constexpr std::uint32_t kMenuProperties = 1025;   ///< MENU_PROPERTIES: of the sessions that are selected
inline constexpr std::uint32_t kMenuRemove = 1026;       ///< MENU_REMOVE: from the list of opened sessions
inline constexpr std::uint32_t kMenuOptions = 1027;      ///< MENU_OPTIONS: those that new sessions begin with
inline constexpr std::uint32_t kMenuEditButtons = 1028;  ///< MENU_EDIT_BUTTONS: the button bar that is shown
inline constexpr std::uint32_t kMenuHelp = 1029;         ///< MENU_HELP
inline constexpr std::uint32_t kMenuRemoveEnded = 1030;  ///< MENU_REMOVE_ENDED: those that have ended

/// The command of that function of keys.
constexpr std::uint32_t CommandOfKeyFunction(std::uint32_t function) {
    return kFirstKeyFunctionCommand + function;
}

/// SEND, RUN, OPEN_SESSION, OPEN_SESSION_TAB, by their names the functions of keys from SB_LINE_UP on, and those above.
/// The bitmap index of a command is its place in this table.
const VMenuResourceData& GetStandardMenuCommands();

/// The picture of the command with that bitmap index: the number of the command of the connect dialog that has it
/// (ConnectCommands). 0 for a command without one.
int GetStandardPicture(std::int32_t bitmapIndex);

}  // namespace connectdialog
