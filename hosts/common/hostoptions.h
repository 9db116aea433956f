// The command line of a host.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace connectdialog::hosts {

enum class HostAction { kShowDialog, kQuickConnect, kOpenSessions, kSetTerminal, kHelp, kVersion };

struct HostOptions {
    HostAction action = HostAction::kShowDialog;
    /// The sessions' paths in the order in which they were named, UTF-8.
    std::vector<std::string> paths;
    /// The folders' paths likewise; the root is `\`.
    std::vector<std::string> folders;
    /// The words of a client that runs for a connection that no store has; none in most cases.
    std::vector<std::string> client;
    /// What quick connect begins with, UTF-8.
    std::optional<std::string> address;
    /// It is a link's: somebody else's, and nobody may be looking at a terminal.
    bool isLink = false;
    /// A store's URL; empty: the user's own store.
    std::string store;
    /// What kSetTerminal sets; empty: the system's.
    std::optional<std::string> terminal;
    /// Sessions open in windows of a terminal emulator, also where there is a terminal.
    bool isInWindow = false;
    /// The main window is wanted, also where there is a terminal.
    bool isMain = false;
    /// Who is told how the session fares; see sessionreport.h. Empty: nobody.
    std::string report;
    /// A failure is left on the screen until the user has read it.
    bool waitsAtEnd = false;
};

/// Reads the arguments behind the program's name: `[--store URL] [--main] [--window] [--wait]`, then `/S PATH` and
/// `/SESSION_FOLDER PATH`, each any number of times and in any case; or `--quick ADDRESS`, `--link ADDRESS`,
/// `--terminal COMMAND`, `--help`, `--version`. Without any of them the dialog is wanted, and so it is by a last
/// `--link` without an address, as a desktop starts a program that it has no link for. What follows an option is its
/// value, whatever it looks like. The values behind `--encoded` are percent-encoded; `--client WORD`, once a word, is
/// for MakeHostArguments.
/// On failure: false, and `fault` says in one line what is wrong.
bool ReadHostOptions(std::span<const char* const> arguments, HostOptions& options, std::string& fault);

/// The arguments with which a host opens a session, all of them words as PercentEncode makes them; those before them
/// are not encoded, and those behind them are. `client` is what runs for a connection that no store has, and is empty
/// for a session, which `path` names. All UTF-8.
std::vector<std::string> MakeHostArguments(const std::string& storeUrl, const std::string& path,
                                           const std::vector<std::string>& client);

}  // namespace connectdialog::hosts
