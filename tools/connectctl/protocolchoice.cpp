#include "tools/connectctl/protocolchoice.h"

#include <algorithm>
#include <vector>

#include "config/connectconfigptr.h"
#include "config/sessionconfig.h"
#include "imports/configpanels.h"
#include "tools/connectctl/output.h"

namespace connectdialog::connectctl {

namespace {

bool IsChoiceOf(const VProfileData& setting, ProtocolSide side) {
    return setting.GetName().EqualsNoCase(GetProtocolNameValue(side));
}

std::vector<VUnicodeString> ListProtocols(ProtocolSide side) {
    std::vector<VUnicodeString> names = {VUnicodeString(kNoProtocol)};
    for (const ConnectProtocolTableElement& row : GetConnectProtocolTable())
        if (IsRowOfSide(row, side) && std::ranges::find(names, row.name) == names.end()) names.push_back(row.name);
    return names;
}

std::string JoinQuoted(const std::vector<VUnicodeString>& names) {
    std::string text;
    for (const VUnicodeString& name : names) text += (text.empty() ? "" : ", ") + Quoted(name);
    return text;
}

}  // namespace

bool IsProtocolChoice(const VProfileData& setting) {
    return IsChoiceOf(setting, ProtocolSide::kTerminal) || IsChoiceOf(setting, ProtocolSide::kTransfer);
}

Failure SelectProtocol(ISessionConfig& session, const VProfileData& choice, std::u16string_view name) {
    const bool isTransfer = IsChoiceOf(choice, ProtocolSide::kTransfer);
    const std::vector<VUnicodeString> names =
        ListProtocols(isTransfer ? ProtocolSide::kTransfer : ProtocolSide::kTerminal);
    const auto found =
        std::ranges::find_if(names, [&](const VUnicodeString& known) { return known.EqualsNoCase(name); });
    if (found == names.end())
        return Quoted(choice.GetName()) + " is one of " + JoinQuoted(names) + ", not " + Quoted(name);
    if (!isTransfer)
        session.SetProtocolName(*found);
    else if (auto* config = dynamic_cast<SessionConfig*>(&session))
        config->SetTransferProtocolName(*found);
    return kDone;
}

}  // namespace connectdialog::connectctl
