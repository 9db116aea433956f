// The two settings of a session that choose its protocols: what can be chosen, and choosing.
#pragma once

#include <string_view>
#include <vector>

#include "config/connectconfigptr.h"

namespace connectdialog {

class ISessionConfig;

/// "None" and the protocols of the side, each once, in the order of the protocol table.
std::vector<VUnicodeString> ListProtocols(ProtocolSide side);

/// Whether the setting is such a choice, and then of which side.
bool IsProtocolChoice(const VProfileData& setting, ProtocolSide& side);

/// Selects the protocol through the session, so that what the protocols share travels to the new one. Case is ignored.
/// On failure: false for a name that is no protocol of that side, and nothing changes.
bool SelectProtocol(ISessionConfig& session, ProtocolSide side, std::u16string_view name);

}  // namespace connectdialog
