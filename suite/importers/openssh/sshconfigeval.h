// What ssh would use for the hosts of a configuration.
//
// The rules are those of ssh_config(5), OpenSSH 9.2: the configuration is gone through in file order, the first value
// of a setting wins, IdentityFile collects them all; of ProxyJump and ProxyCommand the one that comes first rules out
// the other, but for "ProxyJump none". When `Match final` stands somewhere or CanonicalizeHostname is on, it is gone
// through a second time with the real host name, and what is set by then stays. Names are not looked up: a name that
// ssh would complete by its canonical domains stays as it is. Host names come in lower case, IPv4 addresses in their
// usual form (`10.1` is 10.0.0.1).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "suite/importers/openssh/sshproxyjump.h"

namespace connectdialog {

class SshDiagnostics;
struct SshConfig;

/// Who connects.
struct SshUser {
    std::string name;  ///< The local user's name.
    std::string home;  ///< The home folder's path without `/` at its end.
};

/// One host with the values ssh would use for it.
struct SshHost {
    std::string alias;  ///< What the configuration calls it.
    std::string file;   ///< Where it is named first.
    std::size_t line = 0;
    std::string hostName;  ///< HostName with its tokens replaced, else the alias.
    std::string user;      ///< Empty when the configuration sets none.
    int port = 22;
    /// In the order of trial, with `~` and tokens replaced; "none" is left out. A path with a token that only ssh
    /// itself knows, or with a `%` of its own, is as it was written: ssh takes either form.
    std::vector<std::string> identityFiles;
    std::vector<SshHop> jumps;  ///< In the order they are passed; empty for a direct connection.
    std::string proxyCommand;   ///< As written; empty when there is none. Nobody runs it here.
};

/// What the hosts of one configuration may take together, in looks at a block or a character of a pattern: seconds.
inline constexpr std::uint64_t kMaxSshSteps = 1'000'000'000;

/// Works out all aliases of `config` in their order. What is found goes to `diagnostics`, at the alias's line. A host
/// that ssh could not connect to (a bad HostName) is left out with a finding. Costs time in proportion to the hosts and
/// to the blocks that may apply to each. A configuration made to take for ever is cut off after `maxSteps`: the hosts
/// from there on are left out with a finding.
std::vector<SshHost> EvaluateSshConfig(const SshConfig& config, const SshUser& user, SshDiagnostics& diagnostics,
                                       std::uint64_t maxSteps = kMaxSshSteps);

/// The usual form of an IPv4 address that may be written with fewer than four parts, in octal or hexadecimal, as
/// inet_aton() reads it (POSIX); empty when `text` is no address.
std::string CanonicalIPv4Address(std::string_view text);

}  // namespace connectdialog
