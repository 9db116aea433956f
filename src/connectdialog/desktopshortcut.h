// Desktop shortcuts that start a host with sessions and folders.
#pragma once

#include "foundation/vstringarray.h"
#include "foundation/vunicodestring.h"

namespace connectdialog {

class VWindow;

/// What the user is told when one cannot be made.
inline constexpr char16_t kShortcutFailure[] = u"ERROR: creation of shortcut failed";

/// What a shortcut to these says to the host: `/S "PATH" ` for each session, then `/SESSION_FOLDER "PATH" ` for each
/// folder, `/SESSION_FOLDER \ ` for the root.
VUnicodeString BuildShortcutArguments(const VStringArray& sessionPaths, const VStringArray& folderPaths);

/// Whether the arguments name exactly these when the host takes them apart: a name with a double quote and a blank
/// behind it reads as two.
bool NamesExactly(const VUnicodeString& arguments, const VStringArray& sessionPaths, const VStringArray& folderPaths);

/// The label that is offered: the leaf of the one session or folder at `path`, or, for several and for the root, the
/// application's name with "sessions" behind it.
VUnicodeString OfferShortcutLabel(const VUnicodeString& path, bool isMultiple, const VUnicodeString& appName);

/// A program that a shortcut starts.
struct ShortcutHost {
    VUnicodeString program;  ///< its path
    bool needsTerminal = false;
    VStringArray options;  ///< words before the arguments
};

/// Makes a shortcut on the user's desktop that starts this program with its options, as the host told them, and these
/// arguments. One of that label is replaced. `window` may be null.
/// On failure: false, when an argument's quote is left open, for a label that cannot be a file's name, and when the
/// desktop folder cannot be written.
bool CreateDesktopShortcut(const VUnicodeString& arguments, const VUnicodeString& label, VWindow* window);
/// The same for another program.
bool CreateShortcutTo(const ShortcutHost& host, const VUnicodeString& arguments, const VUnicodeString& label);

}  // namespace connectdialog
