// What the hosts differ in.
#pragma once

#include <string_view>

namespace connectdialog::hosts {

struct HostKind {
    const char* program;
    /// Decides the side on which sessions are opened.
    const char16_t* appName;
    /// Under it others ask which sessions are open.
    std::u16string_view frameClass;
    /// The connect dialog's.
    const char16_t* title;
    /// For the usage: what it does with a session.
    const char* purpose;
};

/// Does what the command line asks for; gives the exit code.
int RunHost(const HostKind& kind, int argc, char** argv);

}  // namespace connectdialog::hosts
