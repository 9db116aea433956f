// From a session to the client that opens it: an argument vector, never a line for a shell.
//
// A session may come from somebody else (an import, a shared store), so its values are untrusted. Each one is checked
// against what it can be (a host name, a user name, a path, a port ...) before it enters the vector: a text that begins
// with "-" would be an option of the client, and host and user names travel on into commands that the client's own
// configuration makes. What does not fit is refused with the name of the setting and never repaired. No secret ever
// enters the vector; the clients ask for passwords themselves.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace connectdialog {

class ConnectConfig;
class ISessionConfig;
class VReportMessageParams;

/// What a host runs.
struct LaunchCommand {
    /// UTF-8, the program first: a name to look up in PATH, or an absolute path.
    std::vector<std::string> arguments;
    /// The Debian package that has the program; empty where the program belongs to the user (the shell).
    std::string_view package;
    /// What the user should know before it runs; empty in most cases.
    std::u16string_view note;
};

/// The client for the session's side that the running application opens; an application without a side (a tool) opens
/// the terminal side, or the transfer side when the session has no other. Changes nothing and starts nothing; whether
/// the program is installed is not asked.
///
/// On failure: false, `command` is empty, and the report's text tells the user what is wrong with which setting.
bool BuildLaunchCommand(const ISessionConfig& session, LaunchCommand& command, VReportMessageParams& report);

/// The same for one protocol's settings. Fails for settings that another plug-in made.
bool BuildLaunchCommand(const ConnectConfig& config, LaunchCommand& command, VReportMessageParams& report);

/// Whether the client's program is there.
/// On failure: false, and the report's text tells which program is missing and which package has it.
bool FindClient(const LaunchCommand& command, VReportMessageParams& report);

/// Becomes the client: does not come back. Keys and stores must be closed before.
/// On failure: false with a report like that of FindClient.
bool BecomeClient(const LaunchCommand& command, VReportMessageParams& report);

}  // namespace connectdialog
