// The sessions that a host was told to open, and the ways in which it does.
#pragma once

#include <vector>

#include "foundation/vunicodestring.h"
#include "hosts/common/hostkind.h"
#include "suite/protocols/launchcommand.h"

namespace connectdialog {
class ISessionConfig;
}

namespace connectdialog::hosts {

class TerminalEmulator;

struct HostSession {
    VUnicodeString path;
    LaunchCommand command;
    bool isStored = true;  ///< else no other process finds it at its path
};

/// Adds what opens the session. On failure: false, `fault` tells why, and nothing is added.
bool AddSession(const ISessionConfig& session, std::vector<HostSession>& sessions, VUnicodeString& fault);
/// The same for the session at that path.
bool AddSessionAt(const VUnicodeString& path, std::vector<HostSession>& sessions, VUnicodeString& fault);
/// The same for all sessions of a folder, with those of the folders in it, that this application opens: all or none. A
/// folder without one is a failure.
bool AddSessionsIn(const VUnicodeString& folder, std::vector<HostSession>& sessions, VUnicodeString& fault);
/// Whether all their clients are installed. On failure: false, and `fault` tells which one is not.
bool HaveClients(const std::vector<HostSession>& sessions, VUnicodeString& fault);

/// Runs one client after the other in this terminal, until one is ended by a signal, and tells others meanwhile which
/// sessions are still to end. Gives the exit code of the last client.
int RunHere(const HostKind& kind, const std::vector<HostSession>& sessions);

/// Lets the terminal emulator open each in a window, or in a tab, where this program runs again for it.
/// On failure: false, and `fault` tells why; those before it are open.
bool OpenInWindows(const TerminalEmulator& terminal, bool isInTab, const std::string& storeUrl,
                   const std::vector<HostSession>& sessions, VUnicodeString& fault);

}  // namespace connectdialog::hosts
