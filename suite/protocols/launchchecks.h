// What a value must look like before it may stand in an argument vector.
//
// Each check tells what is wrong, or kLaunchFine. All of them refuse a leading "-" and control characters. An empty
// text is kLaunchMissing: who has a use for an empty one asks first.
#pragma once

#include <string_view>

#include "suite/protocols/launchmessages.h"

namespace connectdialog {

class VReportMessageParams;
class VStringArray;
class VUnicodeString;

/// A host name, an IPv4 address, or an IPv6 address with or without brackets, with or without a scope id
/// ("fe80::1%eth0"). ASCII: a name in another script is written in its ASCII form (xn--).
LaunchFault CheckLaunchHost(std::u16string_view host);

/// Whether CheckLaunchHost takes the text for an IPv6 address.
bool IsNumericIpv6(std::u16string_view host);

/// A user name. Clients put it into commands that shells run (a proxy command, a remote copy), so what has a meaning
/// for shells is refused, and so is what separates names from hosts and passwords for the clients (`:`, `/`, `,`).
LaunchFault CheckLaunchUser(std::u16string_view user);

/// Hops `[user@]host[:port]` with commas between them; an IPv6 address stands in brackets.
LaunchFault CheckLaunchJumpHost(std::u16string_view hops);

/// A path of a file or device.
LaunchFault CheckLaunchPath(std::u16string_view path);

/// A text that is handed on as it is: a phone number, or a command for the shell of another machine.
LaunchFault CheckLaunchText(std::u16string_view text);

/// A program with its arguments: the words between blanks, `"` round one that has blanks in it.
LaunchFault CheckLaunchCommand(std::u16string_view command);
/// The same, and `words` become its words without their quotes: one or more where the command is fine.
LaunchFault SplitLaunchCommand(std::u16string_view command, VStringArray& words);

/// Reports that the number of that name does not lie where it must. Gives false.
bool FailOutOfRange(VReportMessageParams& report, const VUnicodeString& name, int least, int most);

}  // namespace connectdialog
