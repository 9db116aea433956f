// The values of hosts, each as `ssh -G` of OpenSSH 9.2 gives them.
#include "suite/importers/openssh/sshconfigeval.h"

#include <gtest/gtest.h>

#include "suite/importers/openssh/memorysshfiles.h"
#include "suite/importers/openssh/sshconfigfile.h"
#include "suite/importers/openssh/sshdiagnostics.h"

namespace connectdialog {
namespace {

const SshUser kUser = {"me", "/home/me"};

/// `hostname port user jumps identityFiles command`, each that is not set left out of the text.
std::string Describe(const SshHost& host) {
    std::string text = host.hostName + ' ' + std::to_string(host.port);
    if (!host.user.empty()) text += " user=" + host.user;
    if (!host.jumps.empty()) text += " jump=" + FormatProxyJump(host.jumps);
    for (const std::string& file : host.identityFiles) text += " id=" + file;
    if (!host.proxyCommand.empty()) text += " command=" + host.proxyCommand;
    return text;
}

std::string Evaluate(const std::string& config, const std::string& alias, SshDiagnostics& diagnostics) {
    MemorySshFiles files({{"/c", config}, {"/etc/services", "# known\nssh 22/tcp\nweb 80/tcp http\ndns 53/udp\n"}});
    for (const SshHost& host :
         EvaluateSshConfig(ReadSshConfig(files, "/c", kUser.home, diagnostics), kUser, diagnostics)) {
        if (host.alias == alias) return Describe(host);
    }
    return "none";
}

/// The configuration, the alias and its values.
constexpr const char* kCases[][3] = {
    // The form of a line.
    {"Host=h\r\n\tPORT = 5\r\n USER=\"x\"\r\n \r\n", "h", "h 5 user=x"},
    {"\"Host\" h\n Po\"rt\" 5\n HostName==q", "h", "=q 5"},
    {"Host h # i\n User x#y #z\n Port +022", "h", "h 22 user=x#y"},
    {"Host h\n User a\\ b\\\\c\\\"d\\n\f\n", "h", "h 22 user=a b\\c\"d\\n"},
    {"Host h\n User 'a \"b'\n HostName \"x\"y", "h", "xy 22 user=a \"b"},
    {"Host h\n Po\"rt 6\n User x", "h", "h 22 user=x"},
    {"Host h\n Port http", "h", "h 80"},
    {"Host h\n Port web\n Port 5", "h", "h 80"},
    // Patterns.
    {"Host h\n User a\nHost h*\n User b\n Port 3\nHost *\n Port 4", "h", "h 3 user=a"},
    {"Host h1 h2 x\nHost !h1 h*\n User u", "h1", "h1 22"},
    {"Host h1 h2 x\nHost h* !h1\n User u", "h2", "h2 22 user=u"},
    {"Host abcbcd\nHost a*b?\n User u", "abcbcd", "abcbcd 22"},
    {"Host abcbcd\nHost **bc*?\n User u", "abcbcd", "abcbcd 22 user=u"},
    {"Host Up\n User u\nHost up\n Port 5", "Up", "up 22 user=u"},
    // Match.
    {"Host h\nMatch host H,x user m* localuser !me,*\n User u", "h", "h 22"},
    {"Host h\nMatch host H,x user m* localuser me\n User u", "h", "h 22 user=u"},
    {"Host h\n HostName r\nMatch host h\n Port 1\nMatch host r originalhost h\n Port 2", "h", "r 2"},
    {"Host h\nUser bob\nMatch user me\n Port 1\nMatch !user me # all\n Port 2", "h", "h 2 user=bob"},
    {"Host h\nMatch !all\n Port 1\nMatch host=\"h\" all\n Port 2", "h", "h 2"},
    {"Host h\nMatch exec \"touch /x\"\n Port 1\nMatch !exec true\n Port 2", "h", "h 2"},
    {"Host h\n Tag t\nMatch tagged t*\n Port 1", "h", "h 1"},
    {"Host h\nMatch final host h\n Port 1\nMatch canonical\n User u", "h", "h 1 user=u"},
    {"Host h\n HostName R\nHost r\n Port 9\nMatch !final\n User u\nMatch final", "h", "r 9 user=u"},
    {"CanonicalizeHostname yes\nHost h\nMatch canonical\n User u", "h", "h 22 user=u"},
    // Values.
    {"Host h\n HostName a%%.%h", "h", "a%.h 22"},
    {"Host 1234\n Port 5", "1234", "0.0.4.210 5"},
    {"Host h\n HostName 0x7f.010.3", "h", "127.8.0.3 22"},
    {"Host h\n HostName 256.1", "h", "256.1 22"},
    {"Host h\n HostName 1.2.3.4.5", "h", "1.2.3.4.5 22"},
    {"Host h\n IdentityFile none\n IdentityFile ~/k\n IdentityFile b\nHost *\n IdentityFile b\n IdentityFile c", "h",
     "h 22 id=/home/me/k id=b id=c"},
    {"Host h\n User u\n Port 7\n IdentityFile %d/%r@%n-%h:%p\n IdentityFile ~/%C\n IdentityFile ~/a%%", "h",
     "h 7 user=u id=/home/me/u@h-h:7 id=~/%C id=~/a%%"},
    // Proxies.
    {"Host h\n ProxyJump a@b:22,[::1]:5,ssh://u%40x;p@c/ # i", "h", "h 22 jump=a@b:22,[::1]:5,u@x@c"},
    {"Host h\n ProxyJump = \"q\" more", "h", "h 22 jump=\"q\""},
    {"Host h\n ProxyJump a\n ProxyCommand c\n ProxyJump b", "h", "h 22 jump=a"},
    {"Host h\n ProxyCommand c %h # x\n ProxyJump a", "h", "h 22 command=c %h # x"},
    {"Host h\n ProxyCommand none\n ProxyJump a", "h", "h 22"},
    {"Host h\n ProxyJump None\n ProxyCommand c\n ProxyJump a", "h", "h 22 command=c"},
    {"Host h\n User u\n ProxyJump %r@gw-%h", "h", "h 22 user=u jump=u@gw-h"},
    {"Host h\n ProxyJump x,me@h:22", "h", "h 22"},
    {"Host h\n ProxyJump h:23", "h", "h 22 jump=h:23"},
};

TEST(ValuesOfAHost, AreThoseOfSsh) {
    for (const auto& [config, alias, expected] : kCases) {
        SshDiagnostics diagnostics;
        EXPECT_EQ(Evaluate(config, alias, diagnostics), expected) << config;
        EXPECT_FALSE(diagnostics.IsRefused()) << config;
    }
}

TEST(HostsOfAConfiguration, AreTheNamesWithoutWildcardsInFileOrderOnce) {
    MemorySshFiles files({{"/c", "Host b a* !c\nInclude /i\nHost a \"d e\" b\nMatch host z\n"}, {"/i", "Host c b\n"}});
    SshDiagnostics diagnostics;
    std::string names;
    for (const SshAlias& alias : ReadSshConfig(files, "/c", "/h", diagnostics).aliases) {
        names += alias.name + '@' + alias.file + ':' + std::to_string(alias.line) + ' ';
    }
    EXPECT_EQ(names, "b@/c:1 c@/i:1 a@/c:3 d e@/c:3 ");
}

TEST(HostsOfAConfiguration, ThatSshCannotConnectToAreLeftOutWithAFinding) {
    for (const char* const name : {"%z", "%", "a%"}) {
        SshDiagnostics diagnostics;
        EXPECT_EQ(Evaluate(std::string("Host h\n HostName ") + name, "h", diagnostics), "none");
        ASSERT_EQ(diagnostics.All().size(), 1U);
        EXPECT_EQ(diagnostics.All()[0].severity, SshSeverity::kSkipped);
        EXPECT_EQ(diagnostics.All()[0].line, 1U);
    }
}

TEST(HostsOfAConfiguration, AreFoundByTheirName) {
    std::string config = "Host *.org\n Port 9\n";
    for (int i = 0; i < 100; ++i) config += "Host h" + std::to_string(i) + "\n Port 5\n";
    MemorySshFiles files({{"/c", config + "Host none.org h77\n User u\n"}});
    SshDiagnostics diagnostics;
    const SshConfig read = ReadSshConfig(files, "/c", "/h", diagnostics);
    EXPECT_EQ(read.root->BlocksFor("h77"), (std::vector<std::uint32_t>{1, 79, 102}));
}

TEST(HostsOfAConfiguration, StopWhereTheirPatternsTakeTooLong) {
    std::string config;
    for (int i = 0; i < 50; ++i) config += "Host h" + std::to_string(i) + " *" + std::string(20, 'h') + "*\n Port 5\n";
    MemorySshFiles files({{"/c", config}});
    SshDiagnostics diagnostics;
    const SshConfig read = ReadSshConfig(files, "/c", "/h", diagnostics);
    const std::size_t hosts = EvaluateSshConfig(read, kUser, diagnostics, 20'000).size();
    EXPECT_TRUE(hosts > 0 && hosts < 50);
    ASSERT_EQ(diagnostics.All().size(), 1U);
    EXPECT_EQ(diagnostics.All()[0].line, 2 * hosts + 1);
    EXPECT_EQ(EvaluateSshConfig(read, kUser, diagnostics).size(), 50U);
}

}  // namespace
}  // namespace connectdialog
