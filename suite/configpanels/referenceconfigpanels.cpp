#include "suite/configpanels/referenceconfigpanels.h"

#include <string>

#include "config/appkind.h"
#include "imports/dialogkit/vmessagebox.h"
#include "platform/modules.h"
#include "platform/paths.h"
#include "platform/processlaunch.h"
#include "sessiondb/sessionpaths.h"
#include "suite/configpanels/firewallprompt.h"
#include "suite/configpanels/optionalbox.h"
#include "suite/configpanels/referenceglobalconfig.h"
#include "suite/configpanels/sessionname.h"
#include "suite/protocols/protocoltraits.h"

namespace connectdialog {

bool IsSuiteProgramInstalled(const char* name) {
    const std::string own = platform::ToNativePath(platform::GetExecutablePath());
    const std::string beside = own.substr(0, own.rfind('/') + 1) + name;
    return !platform::FindProgram(beside).empty() || !platform::FindProgram(name).empty();
}

bool ReferenceConfigPanels::GetGlobalConfig(VRef<GlobalConfig>& config, std::int32_t) {
    if (!global) global = VRef<ReferenceGlobalConfig>::Adopt(new ReferenceGlobalConfig);
    config = VRef<GlobalConfig>::Share(global.Get());
    return true;
}

const ConnectProtocolTable& ReferenceConfigPanels::GetConnectProtocolTable() {
    return GetReferenceProtocolTable();
}

AppKind ReferenceConfigPanels::GetCurrentAppProductID() {
    return GetAppKind();
}

bool ReferenceConfigPanels::IsIntegrated() {
    return IsNorHaldenOrHaldenInstalled() && IsTessalyInstalled();
}

bool ReferenceConfigPanels::IsNorHaldenInstalled() {
    return IsSuiteProgramInstalled("norhalden");
}

bool ReferenceConfigPanels::IsNorHaldenOrHaldenInstalled() {
    return IsNorHaldenInstalled() || IsSuiteProgramInstalled("halden");
}

bool ReferenceConfigPanels::IsTessalyInstalled() {
    return IsSuiteProgramInstalled("tessaly");
}

bool ReferenceConfigPanels::ValidateSessionName(const VUnicodeString& path, const VUnicodeString& oldName,
                                                const VUnicodeString& newName, bool isNew, VWindow* parent) {
    const VUnicodeString currentName = isNew ? VUnicodeString() : oldName;
    const SessionNameFault fault = CheckSessionName(isNew ? path : GetEntryParent(path), currentName, newName);
    if (fault != SessionNameFault::kNone && parent != nullptr)
        VMessageBox(parent, WordSessionNameFault(fault, newName), kBoxWarning);
    return fault == SessionNameFault::kNone;
}

void ReferenceConfigPanels::LaunchTerminalApp(VWindow* parent, const char16_t*) {
    VMessageBox(parent, u"This version cannot start NorHalden from here."_v, kBoxWarning);
}

void ReferenceConfigPanels::LaunchFileTransferApp(VWindow* parent, const char16_t*) {
    VMessageBox(parent, u"This version cannot start Tessaly from here."_v, kBoxWarning);
}

int ReferenceConfigPanels::ShowOptionalMessageBox(VWindow* parent, const VUnicodeString& text,
                                                  const VUnicodeString& checkText, VProfile<int>& suppress,
                                                  const VUnicodeString& buttonText, bool isQuestion, int picture,
                                                  unsigned) {
    const int answer = ShowOptionalBox(parent, text, checkText, suppress, buttonText, isQuestion, picture);
    if (global && suppress.IsChanged()) global->SaveOne(suppress);
    return answer;
}

bool ReferenceConfigPanels::LaunchFirewallUsernameDialog(IString* answer, bool& save, IParentable*) {
    return AskForFirewall(FirewallQuestion::kUsername, *answer, save, nullptr);
}
bool ReferenceConfigPanels::LaunchFirewallPasswordDialog(IString* answer, bool& save, IParentable*) {
    return AskForFirewall(FirewallQuestion::kPassword, *answer, save, nullptr);
}

}  // namespace connectdialog
