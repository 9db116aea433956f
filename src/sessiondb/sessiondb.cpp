#include "sessiondb/sessiondb.h"

#include "config/firewallconfig.h"
#include "config/sessiondbhooks.h"
#include "sessiondb/buttonbarupgrade.h"
#include "sessiondb/firewalllist.h"

namespace connectdialog {

namespace {

class SessionDatabase : public ISessionDbHooks {
  public:
    IFirewallUI* LoadFirewall(const VUnicodeString& name) override { return connectdialog::LoadFirewall(name); }
    bool SaveFirewall(FirewallConfig& config) override { return connectdialog::SaveFirewall(config); }
    void EnumerateFirewalls(IBuffer& buffer) override { connectdialog::EnumerateFirewalls(buffer); }
    void UpgradeButtonBars() override { connectdialog::UpgradeButtonBars(); }
};

}  // namespace

void InstallSessionDatabase() {
    static SessionDatabase database;
    InstallSessionDbHooks(&database);
}

}  // namespace connectdialog
