// The commands of the main window, whichever menu, bar or key raises them.
#pragma once

#include "resources/connectcommands.h"

namespace connectdialog::hosts::HostCommands {

// What the connect dialog has too, under its numbers: they have pictures.
inline constexpr int kConnect = ConnectCommands::kConnect;
inline constexpr int kQuickConnect = ConnectCommands::kQuickConnect;
inline constexpr int kNewSession = ConnectCommands::kBarNewSession;
inline constexpr int kFind = ConnectCommands::kFind;
inline constexpr int kHelp = ConnectCommands::kHelp;
/// Of the rows that are selected.
inline constexpr int kProperties = ConnectCommands::kBarProperties;
inline constexpr int kRemove = ConnectCommands::kBarDelete;

inline constexpr int kOpenAgain = 3001;
inline constexpr int kRemoveEnded = 3002;
inline constexpr int kOptions = 3003;
inline constexpr int kExit = 3004;

}  // namespace connectdialog::hosts::HostCommands
