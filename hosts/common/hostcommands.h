// The commands of the main window, whichever menu, bar or key raises them. Their numbers are those of the functions
// that descriptions of menus name (menutoolbar/standardcommands.h); a description may bring others.
#pragma once

#include <string_view>

#include "keymap/keyfunctiontable.h"
#include "menutoolbar/standardcommands.h"

namespace connectdialog::hosts::HostCommands {

consteval int OfKeyFunction(std::u16string_view name) {
    return static_cast<int>(CommandOfKeyFunction(KeyFunctionNumber(name)));
}

inline constexpr int kConnect = OfKeyFunction(u"MENU_CONNECT");
inline constexpr int kQuickConnect = OfKeyFunction(u"MENU_QUICK_CONNECT");
inline constexpr int kFind = OfKeyFunction(u"MENU_FIND");
inline constexpr int kOpenAgain = OfKeyFunction(u"MENU_RECONNECT");
inline constexpr int kExit = OfKeyFunction(u"MENU_EXIT");
inline constexpr int kToggleToolbar = OfKeyFunction(u"MENU_TOGGLE_TOOLBAR");
inline constexpr int kToggleButtonBar = OfKeyFunction(u"MENU_TOGGLE_BUTTON_BAR");

inline constexpr int kNewSession = kMenuNewSession;
/// Of the rows that are selected.
inline constexpr int kProperties = kMenuProperties;
inline constexpr int kRemove = kMenuRemove;
inline constexpr int kRemoveEnded = kMenuRemoveEnded;
inline constexpr int kOptions = kMenuOptions;
inline constexpr int kEditButtons = kMenuEditButtons;
inline constexpr int kHelp = kMenuHelp;

/// Those of the buttons of the button bar begin here, behind all that a description can have.
inline constexpr int kFirstButton = 0xE000;
inline constexpr int kMostButtons = 0x1000;

}  // namespace connectdialog::hosts::HostCommands
