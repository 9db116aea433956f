// Quick connect as a host shows it: empty, or filled in from an address of the command line or of a link.
#pragma once

#include <string_view>

#include "foundation/vunicodestring.h"
#include "foundation/vunknown.h"
#include "suite/protocols/quickaddress.h"

namespace connectdialog {
class ISessionConfig;
class VWindow;
}  // namespace connectdialog

namespace connectdialog::hosts {

/// Reads `text`, UTF-8: ParseQuickAddress decides what an address may be. A link must have a scheme, and what is
/// percent-encoded in it is decoded first, so that the checks see what a client would get.
/// On failure: false, `fault` tells why on one line, and `address` stays.
bool ReadQuickAddress(std::string_view text, bool isLink, QuickAddress& address, VUnicodeString& fault);

/// Whether this application has the protocol that the address names, if any; else another one of the suite has it.
/// Requires: the application's name is set.
bool HasProtocolOf(const QuickAddress& address);

/// The next quick connect begins with the address: what else a connection needs comes from the Default session, as if
/// the user had typed the address there. False when the application has no protocol for it.
bool FillQuickConnect(const QuickAddress& address);

/// Shows quick connect; nothing is opened that the user has not seen in it and accepted. What is saved goes into the
/// root folder. `parent` may be null.
/// Null when the user gave up; else the connection, and `isInTab` tells whether it is wanted in a tab.
VRef<ISessionConfig> AskQuickConnect(VWindow* parent, bool& isInTab);

}  // namespace connectdialog::hosts
