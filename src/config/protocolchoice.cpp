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

bool IsProtocolChoice(const VProfileData& setting, ProtocolSide& side) {
    for (const ProtocolSide candidate : {ProtocolSide::kTerminal, ProtocolSide::kTransfer}) {
        if (!setting.GetName().EqualsNoCase(GetProtocolNameValue(candidate))) continue;
        side = candidate;
        return true;
    }
    return false;
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
