// The names of the session database in a profile store. Stored data depends on them: they never change.
#pragma once

namespace connectdialog {

/// The key above all sessions and folders.
inline constexpr char16_t kSessionsKey[] = u"Sessions";
/// The key in a folder that holds how the folder is shown; no entry of the folder.
inline constexpr char16_t kFolderDataKey[] = u"__FolderData__";
/// The template of new sessions, in the root folder.
inline constexpr char16_t kDefaultSession[] = u"Default";
/// A key that has a value of this name, whatever its number, is a session, any other a folder.
inline constexpr char16_t kIsSessionValue[] = u"Is Session";
/// A value of kFolderDataKey: the folder is shown open.
inline constexpr char16_t kIsExpandedValue[] = u"Is Expanded";

/// The key of the global settings.
inline constexpr char16_t kGlobalKey[] = u"Global";

/// The key above all firewalls.
inline constexpr char16_t kFirewallsKey[] = u"Firewalls";
/// The name that stands for no firewall. It has no key.
inline constexpr char16_t kNoFirewall[] = u"None";

/// The key of the button bars; each is a value.
inline constexpr char16_t kButtonBarsKey[] = u"ButtonBarV3";
/// The bar that every user has.
inline constexpr char16_t kDefaultButtonBar[] = u"Default";

}  // namespace connectdialog
