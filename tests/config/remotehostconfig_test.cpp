#include "config/remotehostconfig.h"

#include "config/commonconfig.h"
#include "config/sessiondbhooks.h"
#include "support/fakesuite.h"

namespace connectdialog::test {
namespace {

class RemoteHostConfigTest : public LibraryTest {
  protected:
    VRef<IRemoteHostConfig> Load(const std::function<void(VProfileKey&)>& fill) {
        VRef<IRemoteHostConfig> host;
        WithKey(u"k", [&](VProfileKey& key) {
            fill(key);
            host = VRef<IRemoteHostConfig>::Adopt(new RemoteHostConfig(&key));
        });
        return host;
    }
    static VUnicodeString FirewallName(IRemoteHostConfig& host) {
        VUnicodeString name;
        host.GetFirewallName(name);
        return name;
    }
};

/// Knows no firewall and remembers which one was asked for.
class RecordingHooks : public ISessionDbHooks {
  public:
    IFirewallUI* LoadFirewall(const VUnicodeString& name) override {
        asked = name;
        return nullptr;
    }
    bool SaveFirewall(FirewallConfig&) override { return false; }
    void EnumerateFirewalls(IBuffer&) override {}
    void UpgradeButtonBars() override { ++upgrades; }
    VUnicodeString asked;
    int upgrades = 0;
};

TEST_F(RemoteHostConfigTest, TheOlderSwitchChoosesTheDefaultFirewall) {
    EXPECT_EQ(FirewallName(*Load([](VProfileKey&) {})), u"None");
    EXPECT_EQ(FirewallName(*Load([](VProfileKey& key) { key.WriteDword(u"Use Firewall", 0); })), u"None");
    EXPECT_EQ(FirewallName(*Load([](VProfileKey& key) { key.WriteDword(u"Use Firewall", 1); })),
              u"DefaultTerminalFirewall");
    EXPECT_EQ(FirewallName(*Load([](VProfileKey& key) { key.WriteString(u"Firewall Name", u"dmz"); })), u"dmz");
}

TEST_F(RemoteHostConfigTest, AnOverrideGoesFirstAndIsNotCloned) {
    RecordingHooks hooks;
    InstallSessionDbHooks(&hooks);
    const auto host = VRef<IRemoteHostConfig>::Adopt(new RemoteHostConfig(nullptr));
    host->SetFirewallName(u"own"_v);
    EXPECT_EQ(hooks.asked, u"own");
    host->SetFirewallOverride(u"over"_v);
    EXPECT_EQ(hooks.asked, u"over");
    EXPECT_EQ(FirewallName(*host), u"over");
    const auto clone = VRef<IRemoteHostConfig>::Adopt(host->Clone());
    EXPECT_EQ(FirewallName(*clone), u"own");
    EXPECT_EQ(hooks.asked, u"own") << "the clone loads a firewall of its own";
    host->SetFirewallOverride(VUnicodeString());
    EXPECT_EQ(FirewallName(*host), u"own");
    EXPECT_GE(hooks.upgrades, 4);
}

TEST_F(RemoteHostConfigTest, UserNamesStaySensitive) {
    const auto host = Load([](VProfileKey& key) { key.WriteString(u"Username", u"root"); });
    VUnicodeString name;
    host->GetUsername(name);
    EXPECT_EQ(name, u"root");
    EXPECT_TRUE(name.IsSensitive());
    host->SetUsername(u"other"_v);
    host->GetUsername(name);
    EXPECT_TRUE(name.IsSensitive());
    EXPECT_EQ(host->FindSetting(u"hostname"), host->FindValue(u"HOSTNAME"));
    EXPECT_EQ(host->FindSetting(u"Firewall Port"), nullptr);
}

TEST_F(RemoteHostConfigTest, TheFirstToAskDecidesWhereItComesFrom) {
    CommonConfig common;
    WithKey(u"k", [&](VProfileKey& key) {
        key.WriteString(u"Hostname", u"stored");
        const auto first = VRef<IRemoteHostConfig>::Adopt(common.GetRemoteHostConfig(&key));
        const auto second = VRef<IRemoteHostConfig>::Adopt(common.GetRemoteHostConfig(nullptr));
        EXPECT_EQ(first.Get(), second.Get());
        VUnicodeString name;
        second->GetHostname(name);
        EXPECT_EQ(name, u"stored");
        CommonConfig copy(common);
        const auto copied = VRef<IRemoteHostConfig>::Adopt(copy.GetRemoteHostConfig(nullptr));
        EXPECT_NE(copied.Get(), first.Get());
        copied->GetHostname(name);
        EXPECT_EQ(name, u"stored");
    });
}

}  // namespace
}  // namespace connectdialog::test
