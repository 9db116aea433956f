// firewall and buttons.
#include "tests/connectctl/toolfixture.h"

namespace connectdialog::test {
namespace {

TEST_F(ToolTest, AFirewallIsMadeSetUsedAndRemoved) {
    RunWell({"firewall", "new", "dmz"});
    RunBadly({"firewall", "new", "DMZ"});
    RunBadly({"firewall", "new", "none"});
    RunWell({"firewall", "set", "dmz", "firewall type", "SOCKSv5"});
    RunWell({"firewall", "set", "dmz", "Firewall Address", "proxy.example"});
    EXPECT_NE(RunBadly({"firewall", "set", "dmz", "Firewall Type", "socksv5"}).find("SOCKSv5_USERPASS"),
              std::string::npos);
    EXPECT_NE(RunBadly({"firewall", "set", "dmz", "Firewall Port", "70000"}).find("65535"), std::string::npos);
    RunBadly({"firewall", "set", "dmz", "Firewall Password", "on the command line"});
    EXPECT_EQ(RunWell({"firewall", "ls"}), "dmz\n");
    const std::string shown = RunWell({"firewall", "show", "dmz"});
    EXPECT_TRUE(shown.starts_with("Firewall Type\ttext\tSOCKSv5\nFirewall Address\ttext\tproxy.example\n")) << shown;
    EXPECT_TRUE(shown.ends_with("Firewall Password\ttext\t(hidden)\n")) << shown;

    Seed();
    RunWell({"set", "zeta", "Firewall Name", "dmz"});
    EXPECT_NE(RunWell({"connect", "zeta", "--dry-run"}).find("ProxyCommand=nc -X 5 -x 'proxy.example:1080' %h %p"),
              std::string::npos);
    RunWell({"firewall", "rm", "dmz"});
    EXPECT_EQ(RunWell({"firewall", "ls"}), "");
    EXPECT_NE(RunBadly({"connect", "zeta"}).find("\"dmz\""), std::string::npos);
}

TEST_F(ToolTest, TheDefaultButtonBarIsAlwaysThere) {
    EXPECT_EQ(RunWell({"buttons", "ls"}), "Default\n");
    EXPECT_EQ(RunWell({"buttons", "show"}), "");
    RunWell({"buttons", "check", "Default"});
    RunBadly({"buttons", "check", "other"});
}

}  // namespace
}  // namespace connectdialog::test
