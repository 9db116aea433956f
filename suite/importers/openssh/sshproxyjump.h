// The hosts of ProxyJump.
//
//     jumps = "none" | hop {"," hop}
//     hop   = [user "@"] host [":" port]
//           | "ssh://" [user [";" parameters] "@"] host [":" port] ["/"]      with %xx in the user's name
//     host  = name | "[" address "]"
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace connectdialog {

/// One host on the way.
struct SshHop {
    std::string user;  ///< Empty: what the client takes for that host.
    std::string host;  ///< Without brackets.
    int port = 0;      ///< 0: what the client takes for that host.
};

/// The argument of ProxyJump as ssh cuts it out of the text behind the keyword: quotes belong to it, a space or `#`
/// ends it.
std::string_view TakeProxyJumpArgument(std::string_view rest);

/// The hops in the order they are passed; none for "none". Nothing when ssh refuses the argument.
std::optional<std::vector<SshHop>> ParseProxyJump(std::string_view argument);

/// The hops as an argument of ProxyJump: `user@host:port`, separated by commas, brackets where a host has colons.
std::string FormatProxyJump(const std::vector<SshHop>& hops);

}  // namespace connectdialog
