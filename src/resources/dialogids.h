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

/// A connection without a saved session. The page of the protocol lies over one of the two placeholders.
namespace QuickConnectIds {
inline constexpr int kDialog = 217;
inline constexpr int kProtocolLabel = 1004;
inline constexpr int kProtocol = 4003;
inline constexpr int kTransferPage = 1343;
inline constexpr int kTerminalPage = 1344;
inline constexpr int kShowOnStartup = 1326;
inline constexpr int kSaveSession = 1328;
inline constexpr int kOpenInTab = 1444;
}  // namespace QuickConnectIds

/// The sheet of the new session wizard and its pages; a page is known by the number of its template.
namespace WizardIds {
inline constexpr int kSheet = 6020;
inline constexpr int kPageArea = 6021;
inline constexpr int kBack = 12323;
inline constexpr int kNext = 12324;
inline constexpr int kFinish = 12325;
inline constexpr int kHelp = 9;
inline constexpr int kPicture = 11465;
inline constexpr int kSinglePage = 11463;
inline constexpr int kTerminalPage = 11464;
inline constexpr int kTransferPage = 11466;
inline constexpr int kFinishPage = 11467;
inline constexpr int kProtocol = 1212;
inline constexpr int kDeclineWizard = 3032;
inline constexpr int kName = 1044;
inline constexpr int kDescription = 1045;
}  // namespace WizardIds

/// Where the configuration data shall live.
namespace ConfigFolderIds {
inline constexpr int kDialog = 242;
inline constexpr int kIcon = 1025;
inline constexpr int kIntro = 1191;
inline constexpr int kPath = 1042;
inline constexpr int kBrowse = 1030;
}  // namespace ConfigFolderIds

}  // namespace connectdialog
