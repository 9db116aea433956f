// The sessions that a host was told to open, and the ways in which it does.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "foundation/vunicodestring.h"
#include "hosts/common/hostkind.h"
#include "hosts/common/hostrun.h"
#include "suite/protocols/launchcommand.h"

namespace connectdialog {
class ISessionConfig;
}

namespace connectdialog::hosts {

class SessionReport;
class TerminalEmulator;

struct HostSession {
    VUnicodeString path;
    VUnicodeString protocol;
    VUnicodeString host;
    LaunchCommand command;
    /// Else no process finds it in the store, and the path is only what it is called by.
    bool isStored = true;
};

/// A connection that no store has: `client` are the words of what runs for it, the other three are for the user.
HostSession MakeClientSession(const VUnicodeString& path, const VUnicodeString& protocol, const VUnicodeString& host,
                              const std::vector<std::string>& client);
/// Adds what opens the session. On failure: false, `fault` tells why, and nothing is added.
bool AddSession(const ISessionConfig& session, std::vector<HostSession>& sessions, VUnicodeString& fault);
/// The same for the session at that path.
bool AddSessionAt(const VUnicodeString& path, std::vector<HostSession>& sessions, VUnicodeString& fault);
/// The same for all sessions of a folder, with those of the folders in it, that this application opens: all or none. A
/// folder without one is a failure.
bool AddSessionsIn(const VUnicodeString& folder, std::vector<HostSession>& sessions, VUnicodeString& fault);
/// Whether all their clients are installed. On failure: false, and `fault` tells which one is not.
bool HaveClients(const std::vector<HostSession>& sessions, VUnicodeString& fault);

/// The same for what was chosen in the connect dialog, all or none; their clients must be installed. The dialog's
/// results are released.
bool TakeChosenSessions(std::vector<HostSession>& sessions, VUnicodeString& fault);

/// Runs one client after the other in this terminal, until one is ended by a signal, and tells others meanwhile which
/// sessions are still to end. Returns when the last client ended, with its exit code: 128 and more for a signal.
/// On failure: 1, when a client cannot be started; that was told, and the sessions behind it are not opened.
int RunHere(const HostKind& kind, const std::vector<HostSession>& sessions, SessionReport& report);

/// The terminal emulator in whose windows sessions open: the one that the user's own store names, or the system's.
/// On failure: false, and `fault` tells in words what is missing.
bool FindHostTerminal(const HostRun& run, TerminalEmulator& terminal, VUnicodeString& fault);

/// So long the first of several windows is watched: what opened it may end at once.
inline constexpr std::chrono::milliseconds kWindowPatience{700};
/// The command that opens the session in a window, or in a tab, where this program runs again for it. `reportWord`: see
/// sessionreport.h; empty: nobody is told.
std::vector<std::string> MakeWindowCommand(const TerminalEmulator& terminal, bool isInTab, const std::string& storeUrl,
                                           const HostSession& session, const std::string& reportWord);
/// Runs it. On failure: false, and `fault` tells why. From any thread.
bool StartWindow(const std::vector<std::string>& command, std::chrono::milliseconds patience, VUnicodeString& fault);
/// Opens each like this. On failure: false, and `fault` tells why one is not open; the others are.
bool OpenInWindows(const TerminalEmulator& terminal, bool isInTab, const std::string& storeUrl,
                   const std::vector<HostSession>& sessions, VUnicodeString& fault);

}  // namespace connectdialog::hosts
