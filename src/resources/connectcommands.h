// The commands of the connect dialog: one number, whichever menu, toolbar, key or button raises it.
#pragma once

namespace connectdialog::ConnectCommands {

// Those of the toolbar.
inline constexpr int kConnect = 2000;
inline constexpr int kQuickConnect = 2001;
inline constexpr int kBarProperties = 2002;
inline constexpr int kBarDelete = 2006;
inline constexpr int kBarNewFolder = 2007;
inline constexpr int kBarNewSession = 2008;
inline constexpr int kBarShortcut = 2009;
inline constexpr int kHelp = 2010;
inline constexpr int kBarCut = 2011;
inline constexpr int kBarCopy = 2012;
inline constexpr int kBarPaste = 2013;
inline constexpr int kFind = 2014;

// Those of the menus.
inline constexpr int kNewSession = 2101;
inline constexpr int kProperties = 2102;
inline constexpr int kCut = 2103;
inline constexpr int kCopy = 2104;
inline constexpr int kPaste = 2105;
inline constexpr int kDelete = 2106;
inline constexpr int kNewFolder = 2107;
inline constexpr int kShortcut = 2109;
inline constexpr int kShowDescriptions = 32771;
inline constexpr int kConnectInTerminal = 32772;
inline constexpr int kConnectInTransfer = 32773;
inline constexpr int kConnectInBoth = 32774;
inline constexpr int kShowTransferSessions = 32775;
inline constexpr int kShowTerminalSessions = 32776;
inline constexpr int kOpenInTab = 32777;
inline constexpr int kFindNext = 32778;
inline constexpr int kArrangeManually = 32784;
inline constexpr int kArrangeAlphabetically = 32785;
inline constexpr int kArrangeLogically = 32787;
inline constexpr int kRotateArrangement = 32791;
inline constexpr int kRename = 32922;
inline constexpr int kMenuQuickConnect = 32924;

}  // namespace connectdialog::ConnectCommands
