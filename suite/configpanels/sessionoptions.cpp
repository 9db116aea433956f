#include "suite/configpanels/sessionoptions.h"

#include "config/iremotehostconfig.h"
#include "config/protocolchoice.h"
#include "imports/configpanels.h"
#include "suite/configpanels/sessionoptionsdialog.h"

namespace connectdialog {

namespace {

VUnicodeString FirewallOf(ISessionConfig& session) {
    VUnicodeString name;
    if (const IRemoteHostConfig* host = FindRemoteHost(session)) host->GetFirewallName(name);
    return name;
}

/// Beside the changes, what copying them does not carry: that a side has no protocol any more, the firewall behind its
/// name, and what the session is called.
void TakeOver(ISessionConfig& config, ISessionConfig& edited) {
    const VUnicodeString firewall = FirewallOf(config);
    config.CopyChangesFrom(&edited);
    VUnicodeString terminal;
    VUnicodeString transfer;
    edited.GetProtocolName(terminal);
    edited.GetTransferProtocolName(transfer);
    if (terminal.View() == kNoProtocol) SelectProtocol(config, ProtocolSide::kTerminal, terminal);
    if (transfer.View() == kNoProtocol) SelectProtocol(config, ProtocolSide::kTransfer, transfer);
    IRemoteHostConfig* const host = FindRemoteHost(config);
    if (host != nullptr && FirewallOf(config) != firewall) host->SetFirewallName(FirewallOf(config));
    if (config.GetName() != edited.GetName()) config.SetName(edited.GetName());
}

}  // namespace

std::int64_t ShowSessionOptions(ISessionConfig* config, int, bool multiEdit, bool isNewSession, VWindow* parent) {
    const VRef<ISessionConfig> edited = VRef<ISessionConfig>::Adopt(config->Clone());
    if (!edited) return kDialogCancelled;
    if (multiEdit) edited->Commit();
    const VRef<GlobalConfig> global = FetchGlobalConfig();
    SessionOptionsDialog dialog(*edited, global->optionsPagePath.Get(), multiEdit, isNewSession, parent);
    const std::int64_t result = dialog.DoModal();
    global->optionsPagePath.Set(dialog.GetPagePath());
    if (result != kDialogAccepted) return result;
    if (multiEdit) config->Commit();
    TakeOver(*config, *edited);
    return result;
}

}  // namespace connectdialog
