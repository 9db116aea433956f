#include "config/protocolchoice.h"

#include <algorithm>

#include "config/sessionconfig.h"
#include "imports/configpanels.h"

namespace connectdialog {

std::vector<VUnicodeString> ListProtocols(ProtocolSide side) {
    std::vector<VUnicodeString> names = {VUnicodeString(kNoProtocol)};
    for (const ConnectProtocolTableElement& row : GetConnectProtocolTable())
        if (IsRowOfSide(row, side) && std::ranges::find(names, row.name) == names.end()) names.push_back(row.name);
    return names;
}

std::optional<ProtocolSide> FindProtocolChoice(const VProfileData& setting) {
    for (const ProtocolSide side : kProtocolSides)
        if (setting.GetName().EqualsNoCase(GetProtocolNameValue(side))) return side;
    return std::nullopt;
}

VUnicodeString GetProtocol(const ISessionConfig& session, ProtocolSide side) {
    VUnicodeString name;
    if (side == ProtocolSide::kTerminal)
        session.GetProtocolName(name);
    else
        session.GetTransferProtocolName(name);
    return name;
}

bool SelectProtocol(ISessionConfig& session, ProtocolSide side, std::u16string_view name) {
    for (const VUnicodeString& known : ListProtocols(side)) {
        if (!known.EqualsNoCase(name)) continue;
        if (side == ProtocolSide::kTerminal)
            session.SetProtocolName(known);
        else if (auto* config = dynamic_cast<SessionConfig*>(&session))
            config->SetTransferProtocolName(known);
        return true;
    }
    return false;
}

}  // namespace connectdialog
