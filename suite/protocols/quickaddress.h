// Addresses that name a host to connect to: of a command line or of a link.
#pragma once

#include <cstdint>
#include <string_view>

#include "foundation/vunicodestring.h"

namespace connectdialog {

class ISessionConfig;
class VReportMessageParams;

struct QuickAddress {
    VUnicodeString protocol;  ///< as in the protocol table; empty: the address names none
    VUnicodeString user;      ///< empty: none
    VUnicodeString host;      ///< a name or an address, without brackets
    std::uint16_t port = 0;   ///< 0: none
};

/// Takes `[user@]host[:port]` apart, with an IPv6 address in brackets where a port follows, and the same behind
/// `ssh://`, `telnet://` or `sftp://` (any case), where one "/" may end it and "%25" stands for the "%" of a scope.
/// Each part must be what the launch checks let through, as if the user had typed it: nothing in a link becomes an
/// option or a command of a client. A password, a path or anything else that a link may carry is refused. On failure:
/// false with a report of a LaunchFault; `address` stays.
bool ParseQuickAddress(std::u16string_view text, QuickAddress& address, VReportMessageParams& report);

/// Puts the address into a session as a connection of its own: its protocol, or SSH2 or SFTP where it names none and
/// the session has none with a host; the host; its port, or the protocol's usual one; its user. What else the protocol
/// has is as the session was loaded: nothing stays of an earlier connection.
/// On failure: false when the running application has no such protocol, and nothing has changed.
bool ApplyQuickAddress(ISessionConfig& session, const QuickAddress& address);

}  // namespace connectdialog
