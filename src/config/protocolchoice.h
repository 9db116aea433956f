// The two settings of a session that choose its protocols: what can be chosen, and choosing.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "config/connectconfigptr.h"

namespace connectdialog {

class ISessionConfig;

inline constexpr ProtocolSide kProtocolSides[] = {ProtocolSide::kTerminal, ProtocolSide::kTransfer};

/// "None" and the protocols of the side, each once, in the order of the protocol table.
std::vector<VUnicodeString> ListProtocols(ProtocolSide side);

/// The side whose choice the setting is; none for any other setting.
std::optional<ProtocolSide> FindProtocolChoice(const VProfileData& setting);

/// The name of the side's protocol, as the session keeps it.
VUnicodeString GetProtocol(const ISessionConfig& session, ProtocolSide side);
/// Selects the protocol through the session, so that what the protocols share travels to the new one. Case is ignored.
/// On failure: false for a name that is no protocol of that side, and nothing changes.
bool SelectProtocol(ISessionConfig& session, ProtocolSide side, std::u16string_view name);

}  // namespace connectdialog
