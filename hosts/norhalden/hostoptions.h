// The command line of a host.
#pragma once

#include <span>
#include <string>

namespace connectdialog::hosts {

enum class HostAction { kOpenSession, kHelp, kVersion };

struct HostOptions {
    HostAction action = HostAction::kHelp;
    /// The session's path, UTF-8.
    std::string path;
    /// A store's URL; empty: the user's own store.
    std::string store;
};

/// Reads the arguments behind the program's name: `[--store URL] /S PATH`, `--help`, `--version`. What follows /S is
/// the path, whatever it looks like. On failure: false, and `fault` says in one line what is wrong.
bool ReadHostOptions(std::span<const char* const> arguments, HostOptions& options, std::string& fault);

}  // namespace connectdialog::hosts
