#include "config/sessiondbhooks.h"

#include "foundation/ibuffer.h"
#include "foundation/vstringarray.h"
#include "resources/storenames.h"

namespace connectdialog {

namespace {

/// Stands where no session database was installed.
class NoSessionDbHooks : public ISessionDbHooks {
  public:
    IFirewallUI* LoadFirewall(const VUnicodeString&) override { return nullptr; }
    bool SaveFirewall(FirewallConfig&) override { return false; }
    void EnumerateFirewalls(IBuffer& buffer) override {
        VStringArray names;
        names.Add(VUnicodeString(kNoFirewall));
        names.WriteTo(&buffer);
    }
    void UpgradeButtonBars() override {}
};

NoSessionDbHooks none;
ISessionDbHooks* installed = &none;

}  // namespace

void InstallSessionDbHooks(ISessionDbHooks* hooks) {
    installed = hooks != nullptr ? hooks : &none;
}
ISessionDbHooks* GetSessionDbHooks() {
    return installed;
}

}  // namespace connectdialog
