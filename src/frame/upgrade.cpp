#include "frame/upgrade.h"

#include "config/ifirewallui.h"
#include "config/isessionconfig.h"
#include "config/sessiondbhooks.h"
#include "foundation/vbasicbuffer.h"
#include "foundation/vstringarray.h"
#include "imports/configpanels.h"
#include "profile/vprofilekey.h"
#include "sessiondb/sessionpaths.h"
#include "sessiondb/sessiontree.h"

namespace connectdialog {

namespace {

constexpr std::uint64_t kNameBufferBytes = 256;

void UpgradeSessions() {
    VProfileStore store(nullptr);
    VProfileKey sessions(store.GetRootKey(), kSessionsKey, 0);
    const auto openOnce = [](VProfileKey&, const VUnicodeString& path, const VUnicodeString&, void*) {
        OpenSession(path);
    };
    WalkSessions(sessions, VUnicodeString(), openOnce, nullptr);
}

void UpgradeFirewalls() {
    auto buffer = VRef<VBasicBuffer>::Adopt(new VBasicBuffer(kNameBufferBytes));
    GetSessionDbHooks()->EnumerateFirewalls(*buffer);
    VStringArray names;
    names.ReadFrom(buffer.Get());
    for (const VUnicodeString& name : names) VRef<IFirewallUI>::Adopt(GetSessionDbHooks()->LoadFirewall(name));
}

}  // namespace

void UpgradeStoredData() {
    VRef<GlobalConfig> global;
    if (!GetGlobalConfig(global, -1) || global->configUpgradeMarker.Get().View() != kOldDataMarker) return;
    UpgradeSessions();
    UpgradeFirewalls();
    global->configUpgradeMarker.Set(VUnicodeString(kUpgradedMarker));
    global->Save();
}

}  // namespace connectdialog
