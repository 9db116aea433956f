// From a session's firewall to what its client needs to get past it.
#pragma once

namespace connectdialog {

class ProtocolConfig;
struct LaunchCommand;
class VReportMessageParams;

/// How a client is told of a proxy.
enum class ProxyForm {
    kNone,   ///< not at all
    kSsh,    ///< as the command that ssh runs in place of a connection of its own
    kNetcat  ///< by the options of netcat
};

/// Adds what tells the client of the proxy that the session's protocol goes through; nothing when the way is direct.
/// Never past a firewall: one that does not open, that is of a type that no client here can do, or that wants a
/// password (which would have to stand where others read it) fails, and so does a client that cannot be told. On
/// failure: false with a report.
bool AddLaunchProxy(const ProtocolConfig& config, ProxyForm form, LaunchCommand& command, VReportMessageParams& report);

}  // namespace connectdialog
