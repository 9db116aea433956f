// Shortcuts on the user's desktop.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace connectdialog::platform {

/// What a shortcut starts.
struct ShortcutCommand {
    /// UTF-8; the program first, by its absolute path. They reach the program as they are.
    std::vector<std::string> arguments;
    /// Whether the program is one for a terminal, which the desktop then opens for it.
    bool needsTerminal = false;
};

/// Makes a shortcut under `label`, in place of one of that name. On POSIX it is a file of the desktop entry standard
/// in the desktop folder of user-dirs.dirs, executable by this user, and marked as trusted in the way of the running
/// desktop when that has one (GNOME, Xfce); a mark that cannot be set only means that the desktop asks. A
/// label that is too long for the file's name is whole in the file, which is named by its beginning and its hash.
/// On failure: false with the last error: 87 for a label that is no name of a file to be seen (empty, with a dot in
/// front, with a separator or a control character in it), for half a character in it and for a program that the
/// standard has no way to name; 3, 5, 112...
bool MakeDesktopShortcut(std::u16string_view label, const ShortcutCommand& command);

}  // namespace connectdialog::platform
