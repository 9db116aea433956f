#include "suite/configpanels/referenceconfigpanels.h"

#include <string>

#include "config/appkind.h"
#include "platform/modules.h"
#include "platform/paths.h"
#include "platform/processlaunch.h"
#include "sessiondb/sessionpaths.h"
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
    if (!global) global = VRef<GlobalConfig>::Adopt(new ReferenceGlobalConfig);
    config = global;
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
                                                const VUnicodeString& newName, bool isNew, VWindow*) {
    const VUnicodeString currentName = isNew ? VUnicodeString() : oldName;
    return CheckSessionName(GetEntryParent(path), currentName, newName) == SessionNameFault::kNone;
}

}  // namespace connectdialog
