// From a session's firewall to what its client needs to get past it.
#pragma once

#include <string>

namespace connectdialog {

class ProtocolConfig;
class VReportMessageParams;

/// A proxy as netcat is told of it.
struct LaunchProxy {
    std::string version;  ///< "4", "5" or "connect"; empty: none, the way is direct
    std::string address;  ///< host:port, an IPv6 address in brackets; nothing in it has a meaning for a shell
};

/// The proxy of the firewall that the session's protocol goes through. Never past a firewall: one that does not open,
/// that is of a type that no client here can do, or that wants a password (which would have to stand where others read
/// it) fails.
/// On failure: false with a report.
bool ReadLaunchProxy(const ProtocolConfig& config, LaunchProxy& proxy, VReportMessageParams& report);

}  // namespace connectdialog
