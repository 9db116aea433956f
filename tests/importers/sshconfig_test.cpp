// Reading configurations: includes, broken lines, limits, and the values of hosts, each as `ssh -G` of OpenSSH 9.2
// gives them.
#include <algorithm>
#include <gtest/gtest.h>
#include <map>

#include "suite/importers/openssh/memorysshfiles.h"
#include "suite/importers/openssh/sshconfigeval.h"
#include "suite/importers/openssh/sshconfigfile.h"
#include "suite/importers/openssh/sshdiagnostics.h"
#include "support/temporaryfolder.h"

namespace connectdialog {
namespace {

using Files = std::map<std::string, std::string>;

const SshUser kUser = {"me", "/home/me"};

struct Outcome {
    std::string hosts;                          ///< `alias=user@hostname:port` each.
    std::string findings;                       ///< `severity file:line text` each, severity N, S or R.
    std::string texts;                          ///< The same without file and line.
    std::map<std::string, std::string> values;  ///< of each alias, as Describe gives them
};

/// `hostname port user jumps identityFiles command`, each that is not set left out of the text.
std::string Describe(const SshHost& host) {
    std::string text = host.hostName + ' ' + std::to_string(host.port);
    if (!host.user.empty()) text += " user=" + host.user;
    if (!host.jumps.empty()) text += " jump=" + FormatProxyJump(host.jumps);
    for (const std::string& file : host.identityFiles) text += " id=" + file;
    if (!host.proxyCommand.empty()) text += " command=" + host.proxyCommand;
    return text;
}

Outcome Import(const Files& content) {
    MemorySshFiles files(content);
    SshDiagnostics diagnostics;
    Outcome outcome;
    const SshConfig config = ReadSshConfig(files, "/c", "/home/me", diagnostics);
    for (const SshHost& host : EvaluateSshConfig(config, kUser, diagnostics)) {
        outcome.hosts += host.alias + '=' + host.user + '@' + host.hostName + ':' + std::to_string(host.port) + ' ';
        outcome.values[host.alias] = Describe(host);
    }
    for (const SshDiagnostic& found : diagnostics.All()) {
        const std::string severity(1, "NSR"[static_cast<int>(found.severity)]);
        outcome.findings += severity + ' ' + found.file + ':' + std::to_string(found.line) + ' ' + found.text + '\n';
        outcome.texts += severity + ' ' + found.text + '\n';
    }
    return outcome;
}

TEST(Include, StandsInThePlaceWhereItIsWritten) {
    const std::tuple<const char*, Files, const char*> cases[] = {
        {"before the blocks",
         {{"/c", "Include /i\nHost a\n User late"}, {"/i", "User first\nHost x"}},
         "x=first@x:22 a=first@a:22 "},
        {"in a block, which goes on behind it",
         {{"/c", "Host a b\nHost a\n Include /i\n Port 5\n"}, {"/i", "User in\nHost b\n Port 7\nHost zz\n"}},
         "a=in@a:5 b=@b:22 zz=@zz:22 "},
        {"blocks of a file in a block that applies",
         {{"/c", "Host a*\n Include /i\nHost b"}, {"/i", "Host a1 b\n User u"}},
         "a1=u@a1:22 b=@b:22 "},
        {"relative to .ssh, from any file",
         {{"/c", "Include d/one"}, {"/home/me/.ssh/d/one", "Include two"}, {"/home/me/.ssh/two", "Host t"}},
         "t=@t:22 "},
        {"home, quotes, several",
         {{"/c", "Include ~/x \"~/y z\" none"}, {"/home/me/x", "Host x"}, {"/home/me/y z", "Host y"}},
         "x=@x:22 y=@y:22 "},
        {"globs in byte order, hidden files left out",
         {{"/c", "Include d.d/*"},
          {"/home/me/.ssh/d.d/b", "Host b"},
          {"/home/me/.ssh/d.d/a", "Host a"},
          {"/home/me/.ssh/d.d/.h", "Host h"},
          {"/home/me/.ssh/d.d/sub/x", "Host x"}},
         "a=@a:22 b=@b:22 "},
        {"sets and escapes in globs",
         {{"/c", "Include /d/[!a-c]?/[xy] /d/\\\\*"},
          {"/d/d1/x", "Host x"},
          {"/d/a1/y", "Host no"},
          {"/d/e2/y", "Host y"},
          {"/d/e22/y", "Host no2"},
          {"/d/*", "Host star"}},
         "x=@x:22 y=@y:22 star=@star:22 "},
    };
    for (const auto& [name, files, hosts] : cases) {
        const Outcome outcome = Import(files);
        EXPECT_EQ(outcome.hosts, hosts) << name;
        EXPECT_EQ(outcome.findings, "") << name;
    }
}

TEST(Include, IsBoundedInDepthAndRepetition) {
    const Outcome loop = Import({{"/c", "Host a\nInclude /i\n Port 5\n"}, {"/i", "Include /c\nInclude /i\nUser u\n"}});
    EXPECT_EQ(loop.hosts, "a=u@a:5 ");
    EXPECT_EQ(loop.findings, "R /i:1 the file '/c' includes itself\nR /i:2 the file '/i' includes itself\n");

    Files chain = {{"/c", "Include /1\nHost c\n"}};
    for (int i = 1; i <= 18; ++i)
        chain['/' + std::to_string(i)] = "User u" + std::to_string(i) + "\nInclude /" + std::to_string(i + 1);
    chain["/16"] = "Port 16\n" + chain["/16"];
    chain["/17"] = "HostName deep";
    const Outcome deep = Import(chain);
    EXPECT_EQ(deep.hosts, "c=u1@c:16 ");
    EXPECT_EQ(deep.findings, "R /16:3 files are included deeper than 16 levels\n");

    // Each of 16 files includes the next one twice: 65,536 occurrences of the last.
    Files tree = {{"/c", "Include /1\nHost c\n"}};
    for (int i = 1; i < 16; ++i)
        tree['/' + std::to_string(i)] = "Include /" + std::to_string(i + 1) + " /" + std::to_string(i + 1);
    tree["/16"] = "Port 16\n";
    const Outcome wide = Import(tree);
    EXPECT_EQ(wide.hosts, "c=@c:16 ");
    EXPECT_NE(wide.findings.find("more than 4096 files"), std::string::npos);
}

struct BrokenCase {
    std::string line;     ///< Behind "Host a\n Port 5\n".
    const char* finding;  ///< Without file and line; empty when there is none.
    const char* hosts = "a=@a:5 ";
};

TEST(BrokenLine, IsReportedAndTheRestIsRead) {
    using std::string_literals::operator""s;
    const BrokenCase cases[] = {
        {"User", "R no argument after keyword 'user'"},
        {"User \"x", "R a quote is not closed"},
        {"User # x", "R keyword user lacks its argument"},
        {"HostName b c", "R keyword hostname has extra arguments", "a=@b:5 "},
        {"Bogus \x1b[2Jx", "R unknown keyword 'bogus'"},
        {"\x1b\xc2\x9b x", "R unknown keyword '<U+001B><U+009B>'"},
        {"Host b\nPort 65536", "R bad port '65536'", "a=@a:5 b=@b:22 "},
        {"ProxyJump a,,b", "R ProxyJump cannot be 'a,,b'"},
        {"ConnectTimeout 1h30x", "R keyword connecttimeout has the bad argument '1h30x'"},
        {"Compression maybe", "R keyword compression has the bad argument 'maybe'"},
        {"Ciphers arcfour,aes128-ctr", "R keyword ciphers has the bad argument 'arcfour,aes128-ctr'"},
        {"Ciphers -arcfour", ""},
        {"ServerAliveCountMax -1", "R keyword serveralivecountmax has the bad argument '-1'"},
        {"HostKeyAlgorithms ssh-*,ecdsa-x", "R keyword hostkeyalgorithms has the bad argument 'ssh-*,ecdsa-x'"},
        {"IgnoreUnknown x,Bo*\nBogus x", ""},
        {"Host \"\"\nUser evil", "R keyword host has an empty argument"},
        {"Include \"\"", "R keyword include has an empty argument"},
        {"Include ~other/x", "S the home folder in '~other/x' is another user's"},
        {"Match bogus x\nUser evil", "R Match has the unknown criterion 'bogus'"},
        {"Match host a user me all\nUser evil", "R Match all stands with other criteria"},
        {"Match exec true\nUser evil", "N the command of Match exec is not run and counts as false"},
        {"Match localnetwork 10/8\nUser evil",
         "N OpenSSH before 9.4 refuses Match localnetwork\nN Match localnetwork is not tested and counts as false"},
        {"User bob\0by"s, "S the line holds a NUL byte; what stands behind it is left out", "a=bob@a:5 "},
        {"Host " + std::string(std::size_t{10} << 20U, 'x') + "\nUser evil", "S the line is longer than 1048576 bytes"},
        {"User " + std::string(5000, 'x'), "S the value is longer than 4096 bytes"},
        {"Host " + std::string(1026, 'x'),
         "S the host name '"
         "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"
         "...' is too long"},
    };
    for (const BrokenCase& one : cases) {
        const Outcome outcome = Import({{"/c", "Host a\n Port 5\n" + one.line + "\n"}});
        const std::string shown = one.line.substr(0, 60);
        EXPECT_EQ(outcome.texts, *one.finding == 0 ? "" : one.finding + "\n"s) << shown;
        EXPECT_EQ(outcome.hosts, one.hosts) << shown;
    }
}

TEST(BrokenFile, IsReportedOnceAndItsFindingsAreCountedBeyondAThousand) {
    std::string lines;
    for (int i = 0; i < 1500; ++i) lines += "bogus\n";
    EXPECT_EQ(std::ranges::count(Import({{"/c", lines}}).texts, '\n'), 1000);
    EXPECT_EQ(Import({{"/x", ""}}).findings, "R /c:0 no such file\n");
    EXPECT_EQ(Import({{"/c/d", ""}}).findings, "R /c:0 is a folder\n");
    const Outcome marked = Import({{"/c", "\xEF\xBB\xBFHost a\n Port 5"}});
    EXPECT_EQ(marked.hosts, "a=@a:5 ");
    EXPECT_EQ(marked.findings, "R /c:1 the file begins with a byte order mark\n");
}

TEST(FilesOnDisk, AreReadWholeAndNothingElseIs) {
    const test::TemporaryFolder folder;
    std::filesystem::create_directory(folder / "sub");
    folder.Write("file", "a\r\n\n" + std::string(100'000, 'x'));
    DiskSshFiles files;
    std::string text;
    std::string error;
    EXPECT_EQ(files.Read(folder / "file", 100'004, text, error), SshReadResult::kRead);
    EXPECT_EQ(text.size(), 100'004U);
    EXPECT_EQ(files.Read(folder / "file", 100'003, text, error), SshReadResult::kFailed);
    EXPECT_EQ(error, "larger than 100003 bytes");
    EXPECT_EQ(files.Read("/dev/zero", 10, text, error), SshReadResult::kFailed);
    EXPECT_EQ(text, "");
    std::size_t entriesLeft = 100;
    EXPECT_EQ(ExpandSshGlob(files, folder / "[fs]*", entriesLeft),
              (std::vector<std::string>{folder / "file", folder / "sub"}));
    EXPECT_EQ(entriesLeft, 98U);
}

/// The configuration, the alias and its values.
constexpr const char* kCases[][3] = {
    // The form of a line.
    {"Host=h\r\n\tPORT = 5\r\n USER=\"x\"\r\n \r\n", "h", "h 5 user=x"},
    {"\"Host\" h\n Po\"rt\" 5\n HostName==q", "h", "=q 5"},
    {"Host h # i\n User x#y #z\n Port +022", "h", "h 22 user=x#y"},
    {"Host h\n User a\\ b\\\\c\\\"d\\n\f\n", "h", "h 22 user=a b\\c\"d\\n"},
    {"Host h\n User 'a \"b'\n HostName \"x\"y", "h", "xy 22 user=a \"b"},
    {"Host h\n Port web\n Port 5", "h", "h 80"},
    // Patterns.
    {"Host h\n User a\nHost h*\n User b\n Port 3\nHost *\n Port 4", "h", "h 3 user=a"},
    {"Host h1 h2 x\nHost !h1 h*\n User u", "h1", "h1 22"},
    {"Host h1 h2 x\nHost h* !h1\n User u", "h2", "h2 22 user=u"},
    {"Host abcbcd\nHost **bc*?\n User u", "abcbcd", "abcbcd 22 user=u"},
    {"Host Up\n User u\nHost up\n Port 5", "Up", "up 22 user=u"},
    // Match.
    {"Host h\nMatch host H,x user m* localuser !me,*\n User u", "h", "h 22"},
    {"Host h\nMatch host H,x user m* localuser me\n User u", "h", "h 22 user=u"},
    {"Host h\n HostName r\nMatch host h\n Port 1\nMatch host r originalhost h\n Port 2", "h", "r 2"},
    {"Host h\nUser bob\nMatch user me\n Port 1\nMatch !user me # all\n Port 2", "h", "h 2 user=bob"},
    {"Host h\nMatch !all\n Port 1\nMatch host=\"h\" all\n Port 2", "h", "h 2"},
    {"Host h\nMatch exec \"touch /x\"\n Port 1\nMatch !exec true\n Port 2", "h", "h 2"},
    {"Host h\nMatch final host h\n Port 1\nMatch canonical\n User u", "h", "h 1 user=u"},
    {"Host h\n HostName R\nHost r\n Port 9\nMatch !final\n User u\nMatch final", "h", "r 9 user=u"},
    {"CanonicalizeHostname yes\nHost h\nMatch canonical\n User u", "h", "h 22 user=u"},
    // Values.
    {"Host h\n HostName a%%.%h", "h", "a%.h 22"},
    {"Host 1234\n Port 5", "1234", "0.0.4.210 5"},
    {"Host h\n HostName 0x7f.010.3", "h", "127.8.0.3 22"},
    {"Host h\n IdentityFile none\n IdentityFile ~/k\n IdentityFile b\nHost *\n IdentityFile b\n IdentityFile c", "h",
     "h 22 id=/home/me/k id=b id=c"},
    {"Host h\n User u\n Port 7\n IdentityFile %d/%r@%n-%h:%p\n IdentityFile ~/%C\n IdentityFile ~/a%%", "h",
     "h 7 user=u id=/home/me/u@h-h:7 id=~/%C id=~/a%%"},
    // Proxies.
    {"Host h\n ProxyJump a@b:22,[::1]:5,ssh://u%40x;p@c/ # i", "h", "h 22 jump=a@b:22,[::1]:5,u@x@c"},
    {"Host h\n ProxyJump = \"q\" more", "h", "h 22 jump=\"q\""},
    {"Host h\n ProxyJump a\n ProxyCommand c\n ProxyJump b", "h", "h 22 jump=a"},
    {"Host h\n ProxyCommand c %h # x\n ProxyJump a", "h", "h 22 command=c %h # x"},
    {"Host h\n ProxyJump None\n ProxyCommand c\n ProxyJump a", "h", "h 22 command=c"},
    {"Host h\n User u\n ProxyJump %r@gw-%h", "h", "h 22 user=u jump=u@gw-h"},
    {"Host h\n ProxyJump x,me@h:22", "h", "h 22"},
};

TEST(ValuesOfAHost, AreThoseOfSsh) {
    for (const auto& [config, alias, expected] : kCases) {
        Outcome outcome = Import({{"/c", config}, {"/etc/services", "# known\nssh 22/tcp\nweb 80/tcp http\n"}});
        EXPECT_EQ(outcome.values[alias], expected) << config;
        EXPECT_FALSE(outcome.texts.starts_with('R')) << config;
    }
}

TEST(HostsOfAConfiguration, ThatSshCannotConnectToAreLeftOutWithAFinding) {
    EXPECT_EQ(Import({{"/c", "Host h\n HostName %z"}}).hosts, "");
    EXPECT_TRUE(Import({{"/c", "Host h\n HostName %z"}}).findings.starts_with("S /c:1 "));
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
