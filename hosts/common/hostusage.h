// What a host tells of its use on the command line.
#pragma once

#include <span>
#include <string_view>

#include "hosts/common/hostkind.h"
#include "hosts/common/hostoptions.h"

namespace connectdialog::hosts {

/// Exit codes of a host that no client's takes the place of.
inline constexpr int kFailed = 1;
inline constexpr int kWrongUsage = 2;

/// Tells the text on standard error; gives the exit code.
int Fail(const HostKind& kind, std::u16string_view text, int exitCode = kFailed);
/// Tells how the program is used, and what is wrong with its command line; gives the exit code.
int RefuseUsage(const HostKind& kind, std::u16string_view fault);

/// Reads the arguments behind the program's name. False when nothing is left to do: they asked for help or the version,
/// or they are wrong, and that was told. `exitCode` is the program's then.
bool TakeCommandLine(const HostKind& kind, std::span<const char* const> arguments, HostOptions& options, int& exitCode);

}  // namespace connectdialog::hosts
