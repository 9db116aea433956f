#include "tools/connectctl/protocolchoice.h"

#include <algorithm>
#include <vector>

#include "config/sessionconfig.h"
#include "imports/configpanels.h"
#include "tools/connectctl/output.h"

namespace connectdialog::connectctl {

namespace {

constexpr std::u16string_view kTerminalChoice = u"Protocol Name";
constexpr std::u16string_view kTransferChoice = u"Transfer Protocol Name";

bool IsTransferChoice(const VProfileData& setting) {
    return setting.GetName().EqualsNoCase(kTransferChoice);
}

std::vector<VUnicodeString> ListProtocols(bool isTransfer) {
    std::vector<VUnicodeString> names = {u"None"_v};
    for (const ConnectProtocolTableElement& row : GetConnectProtocolTable()) {
        const bool isTerminalRow = row.kind == AppKind::kNorHalden || row.kind == AppKind::kHalden;
        const bool fits = isTransfer ? row.kind == AppKind::kTessaly : isTerminalRow;
        if (fits && std::ranges::find(names, row.name) == names.end()) names.push_back(row.name);
    }
    return names;
}

std::string JoinQuoted(const std::vector<VUnicodeString>& names) {
    std::string text;
    for (const VUnicodeString& name : names) text += (text.empty() ? "" : ", ") + Quoted(name);
    return text;
}

}  // namespace

bool IsProtocolChoice(const VProfileData& setting) {
    return setting.GetName().EqualsNoCase(kTerminalChoice) || IsTransferChoice(setting);
}

Failure SelectProtocol(ISessionConfig& session, const VProfileData& choice, std::u16string_view name) {
    const bool isTransfer = IsTransferChoice(choice);
    const std::vector<VUnicodeString> names = ListProtocols(isTransfer);
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
