#include "suite/sessionoptions/sessionoptions.h"

#include <vector>

#include "config/iremotehostconfig.h"
#include "config/protocolchoice.h"
#include "config/settingwalk.h"
#include "imports/configpanels.h"
#include "profile/vprofiledata.h"
#include "suite/protocols/protocolconfig.h"
#include "suite/sessionoptions/sessionoptionsdialog.h"

namespace connectdialog {

namespace {

VUnicodeString FirewallOf(ISessionConfig& session) {
    VUnicodeString name;
    if (const IRemoteHostConfig* host = FindRemoteHost(session)) host->GetFirewallName(name);
    return name;
}

void TakeProtocols(ISessionConfig& config, const ISessionConfig& edited) {
    for (const ProtocolSide side : kProtocolSides) {
        const VUnicodeString name = GetProtocol(edited, side);
        if (name != GetProtocol(config, side)) SelectProtocol(config, side, name);
    }
}

/// All values as they are edited, also those that are again what the store has, which a copy of changes leaves out.
void TakeOver(ISessionConfig& config, ISessionConfig& edited) {
    const VUnicodeString firewall = FirewallOf(config);
    TakeProtocols(config, edited);
    // With the same protocols both have the same settings in the same order.
    std::vector<const VProfileData*> values;
    VisitSettings(edited, [&](const VProfileData& setting) { values.push_back(&setting); });
    std::size_t next = 0;
    VisitSettings(config, [&](VProfileData& setting) {
        if (next < values.size()) setting.Assign(*values[next++]);
    });
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
