// What the host gives the library at its start for dialogs to use.
#pragma once

#include <cstdint>

#include "foundation/isynchobject.h"
#include "foundation/vstringarray.h"
#include "foundation/vunicodestring.h"

namespace connectdialog {

class ISessionConfig;
class VWindow;

/// The host's session options dialog: edits `config` in place; 1 means accepted. `pageMode` is 0 for one session and 4
/// for several.
using SessionOptionsFunction = std::int64_t (*)(ISessionConfig* config, int pageMode, bool multiEdit, bool isNewSession,
                                                VWindow* parent);
/// The host's help; the library calls it only as (dialog window, 11, 0).
using HelpFunction = void (*)(VWindow* window, unsigned command, unsigned long data);

struct HostCallbacks {
    /// What stands for "%1" in launch commands.
    VUnicodeString applicationCommandLine;
    SessionOptionsFunction sessionOptions = nullptr;
    HelpFunction help = nullptr;
    /// The host is a program for a terminal: a shortcut to it opens one.
    bool needsTerminal = false;
    /// Words that a shortcut to the host has before its arguments: which store it is about.
    VStringArray shortcutOptions;
    /// Held while toolbars are laid out; may be null.
    VRef<ISynchObject> toolbarLock = nullptr;
};

/// One for the process.
HostCallbacks& GetHostCallbacks();

/// The command line with which a sister application opens the session at that path.
VUnicodeString MakeLaunchCommand(const VUnicodeString& path);

}  // namespace connectdialog
