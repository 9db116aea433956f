// The ids of the dialogs and of their controls.
#pragma once

namespace connectdialog {

/// The session tree and what a user does with it. Its commands stand in connectcommands.h.
namespace ConnectDialogIds {
inline constexpr int kDialog = 130;
inline constexpr int kTree = 1036;
inline constexpr int kConnect = 1044;
inline constexpr int kShowOnStartup = 1339;
inline constexpr int kOpenInTab = 4002;
inline constexpr int kSeparator = 1347;
inline constexpr int kTransferToolbar = 134;
inline constexpr int kTerminalToolbar = 135;
}  // namespace ConnectDialogIds

/// A label for a desktop shortcut.
namespace ShortcutNameIds {
inline constexpr int kDialog = 255;
inline constexpr int kIntro = 1340;
inline constexpr int kName = 1360;
inline constexpr int kPath = 1364;
}  // namespace ShortcutNameIds

/// The host of a session that was saved without one.
namespace HostnamePromptIds {
inline constexpr int kDialog = 5014;
inline constexpr int kHostname = 5034;
inline constexpr int kRequest = 11461;
inline constexpr int kSessionName = 11462;
}  // namespace HostnamePromptIds

/// More sessions are selected than a user opens knowingly.
namespace MultiConnectIds {
inline constexpr int kDialog = 11473;
inline constexpr int kDontShowAgain = 11457;
inline constexpr int kIcon = 11458;
inline constexpr int kText = 11459;
}  // namespace MultiConnectIds

/// A text to look for in the session tree.
namespace FindSessionIds {
inline constexpr int kDialog = 11476;
inline constexpr int kText = 11529;
inline constexpr int kSessionNames = 11530;
inline constexpr int kFolderNames = 11531;
inline constexpr int kDescriptions = 11532;
inline constexpr int kHostnames = 11533;
inline constexpr int kMatchCase = 11534;
}  // namespace FindSessionIds

}  // namespace connectdialog
