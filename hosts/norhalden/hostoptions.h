// The command line of a host.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace connectdialog::hosts {

enum class HostAction { kOpenSessions, kHelp, kVersion };

struct HostOptions {
    HostAction action = HostAction::kHelp;
    /// The sessions' paths in the order in which they were named, UTF-8.
    std::vector<std::string> paths;
    /// The folders' paths likewise; the root is `\`.
    std::vector<std::string> folders;
    /// A store's URL; empty: the user's own store.
    std::string store;
};

/// Reads the arguments behind the program's name: `[--store URL]`, then `/S PATH` and `/SESSION_FOLDER PATH`, each any
/// number of times and in any case; or `--help`, `--version`. What follows /S is the path, whatever it looks like. On
/// failure: false, and `fault` says in one line what is wrong.
bool ReadHostOptions(std::span<const char* const> arguments, HostOptions& options, std::string& fault);

}  // namespace connectdialog::hosts
