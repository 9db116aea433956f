// Texts of hosts and ports: which are addresses, where the port stands, and what of them may stand in a session's name.
#pragma once

#include <cstdint>

#include "foundation/iinternetaddress.h"
#include "foundation/vunicodestring.h"
#include "foundation/vunknown.h"

namespace connectdialog {

/// Whether the text looks like four numbers with dots: it begins with a digit, has exactly three dots with a digit
/// behind each, and only digits behind the last. What else stands between the dots is not looked at.
bool VIsDottedNumeric(const VUnicodeString& text);

/// Whether the text is an address and no name, as the system's resolver sees it; `family`, when given, tells which. A
/// short form of an IPv4 address counts as a name. No name is looked up. On failure: `family` stays.
bool VIsNumericHost(const VUnicodeString& text, platform::AddressFamily* family = nullptr);

/// The address that the text is, with port 0; null when it is none.
VRef<IInternetAddress> VMakeAddressFromText(const VUnicodeString& text);

/// A host's name in the form in which it stands in a session's name: in lower case, an address in its usual form, and
/// `_` for each of `:`, `\` and `/`.
VUnicodeString VSafeHostName(const VUnicodeString& text);

/// Splits `host`, `host:port`, `[address]` or `[address]:port`. A text of several colons without brackets is an IPv6
/// address. The port is 0 when none is told; it is read by VParseUnsigned16.
/// On failure: false for a port that is no number up to 65535 and for brackets that do not fit; both outputs stay.
bool VSplitHostPort(const VUnicodeString& text, VUnicodeString& host, std::uint16_t& port);

}  // namespace connectdialog
