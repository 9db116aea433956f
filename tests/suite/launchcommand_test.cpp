#include "suite/protocols/launchcommand.h"

#include <cstdlib>
#include <map>

#include "foundation/vnarrowstring.h"
#include "profile/vvariant.h"
#include "suite/protocols/launchmessages.h"
#include "suite/protocols/protocoltraits.h"
#include "support/suitetest.h"

namespace connectdialog::test {
namespace {

using Words = std::vector<std::string>;
using Text = std::u16string_view;
/// Names of settings and what they are set to; a number as its digits.
using Values = std::map<Text, Text>;

class LaunchCommandTest : public SuiteTest {
  protected:
    /// What the client of a session with these settings is started with; empty: refused, and `report` tells why.
    Words Build(Text protocol, const Values& values) {
        const auto session = Make(VUnicodeString(protocol).GetData());
        std::size_t set = 0;
        for (VProfileData* setting : SettingsOf(Protocol(*session))) {
            const auto found = values.find(setting->GetName());
            if (found == values.end()) continue;
            EXPECT_TRUE(setting->SetVariant(VVariant(VUnicodeString(found->second)), report));
            ++set;
        }
        EXPECT_EQ(set, values.size()) << "a row names a setting that the protocol does not have";
        LaunchCommand command;
        report.Clear();
        const bool isBuilt = BuildLaunchCommand(*session, command, report);
        EXPECT_EQ(isBuilt, !command.arguments.empty());
        return command.arguments;
    }
    VReportMessageParams report;
};

TEST_F(LaunchCommandTest, EachProtocolStartsItsClient) {
    const Values host = {{u"Hostname", u"h"}};
    const Values user = {{u"Hostname", u"h"}, {u"Username", u"DOM\\u"}};
    const Values address = {{u"Hostname", u"[fe80::1%eth0]"}};
    const Values full = {{u"Hostname", u"h"},
                         {u"Username", u"u"},
                         {u"SSH Port", u"2222"},
                         {u"SSH Identity File", u"\\home\\my keys\\id"},
                         {u"SSH Jump Host", u"a@j:24,[::1]:25"},
                         {u"SSH Forward Agent", u"1"},
                         {u"SSH Forward X11", u"1"},
                         {u"SSH Remote Command", u"tail -f \"$LOG\" | less"}};
    const Values line = {{u"Serial Device", u"ttyUSB0"}, {u"Serial Parity", u"2"}, {u"Serial Flow Control", u"1"}};
    const std::tuple<Text, Values, Words> rows[] = {
        {u"SSH2", host, {"ssh", "-p", "22", "--", "h"}},
        {u"SSH2",
         full,
         {"ssh", "-p", "2222", "-i", "/home/my keys/id", "-J", "a@j:24,[::1]:25", "-l", "u", "-A", "-X", "-t", "--",
          "h", "tail -f \"$LOG\" | less"}},
        {u"SSH2", address, {"ssh", "-p", "22", "--", "fe80::1%eth0"}},
        {u"SSH1", user, {"ssh1", "-1", "-p", "22", "-l", "DOM\\u", "--", "h"}},
        {u"Telnet", user, {"telnet", "-l", "DOM\\u", "--", "h", "23"}},
        {u"Telnet/SSL", host, {"telnet-ssl", "-z", "ssl", "--", "h", "992"}},
        {u"RLogin", user, {"rsh-redone-rlogin", "-l", "DOM\\u", "-p", "513", "--", "h"}},
        {u"Raw", {{u"Hostname", u"h"}, {u"Raw Port", u"7"}}, {"nc", "--", "h", "7"}},
        {u"Serial",
         line,
         {"picocom", "--baud", "9600", "--databits", "8", "--parity", "e", "--stopbits", "1", "--flow", "h", "--",
          "/dev/ttyUSB0"}},
        {u"Local Shell", {{u"Local Shell Command", u"a  -d \"5 0\" $X ;x"}}, {"a", "-d", "5 0", "$X", ";x"}},
        {u"SFTP", user, {"sftp", "-P", "22", "--", "DOM\\u@h"}},
        {u"SCP", address, {"sftp", "-P", "22", "--", "[fe80::1%eth0]"}},
        {u"FTP", user, {"lftp", "-p", "21", "-u", "DOM\\u", "ftp://h"}},
        {u"FTP/SSL (implicit)", address, {"lftp", "-p", "990", "ftps://[fe80::1%25eth0]"}},
        {u"FTP/SSL (explicit)",
         host,
         {"lftp", "-e", "set ftp:ssl-force yes; set ftp:ssl-protect-data yes", "-p", "21", "ftp://h"}},
    };
    for (const auto& [protocol, values, words] : rows) EXPECT_EQ(Build(protocol, values), words);
}

TEST_F(LaunchCommandTest, TheUsersShellNeedsAPath) {
    const char* before = std::getenv("SHELL");
    const std::string kept = before != nullptr ? before : "/bin/sh";
    setenv("SHELL", "/bin/other shell", 1);
    EXPECT_EQ(Build(u"Local Shell", {}), Words{"/bin/other shell"});
    setenv("SHELL", "-c evil", 1);
    EXPECT_EQ(Build(u"Local Shell", {}), Words{"/bin/sh"});
    setenv("SHELL", kept.c_str(), 1);
}

/// Every text that a protocol saves, whatever the protocol: what no such text may be is refused, and the report names
/// it.
TEST_F(LaunchCommandTest, HostileTextsAreRefusedByEveryProtocol) {
    const std::vector<Text> always = {
        u"-oProxyCommand=touch x", u"-", u"--", u"-e!sh", u"a\nb", u"a\x1B[2Jb", u"a\rb", u"a\u009B1mb", u"a\u202Eb"};
    const std::u16string tooLong(20000, u'h');
    const std::map<Text, std::vector<Text>> besides = {
        {u"Hostname", {u"a b",  u"a;b",  u"$(id)", u"`id`",      u"a|b",     u"a&b", u"a'b", u"a\"b",
                       u"a/b",  u"a\\b", u"u@h",   u"h:22",      u"ssh://h", u"a,b", u"a%b", u"::1%",
                       u"[::1", u"*",    u"[a]",   u"::1%$(id)", u"\u00E4",  u" h",  u"a#b"}},
        {u"Username",
         {u"a b", u"a;b", u"$(id)", u"`id`", u"a|b", u"a'b", u"a:b", u"u,pw", u"a\\", u"a/b", u"a\u3000b", u"a%h",
          u"a#b", u"a*"}},
        {u"SSH Jump Host",
         {u"a b", u"a;b", u"$(id)@h", u"u@-h", u"-oX@h", u"h,", u",h", u"h:0", u"h:x", u"u@", u"h,-h", u"a\\b@h",
          u"[::1", u"h:65536", u"::1", u"@h"}},
    };
    std::size_t refused = 0;
    for (const ConnectProtocolTableElement& row : GetReferenceProtocolTable()) {
        if (row.createConfig == nullptr) continue;
        const ProtocolTraits& traits = *FindProtocolTraits(row.name);
        if (traits.client == LaunchClient::kNone) continue;
        const auto session = Make(row.name.GetData());
        for (const VProfileData* setting : SettingsOf(Protocol(*session))) {
            const Text name = setting->GetName();
            const auto* text = dynamic_cast<const VProfileText*>(setting);
            if (text == nullptr || name == u"Firewall Name") continue;
            if (traits.client == LaunchClient::kRaw && name == u"Username") continue;  // nothing takes it there
            std::vector<Text> values = always;
            values.push_back(tooLong);
            if (const auto more = besides.find(name); more != besides.end())
                values.insert(values.end(), more->second.begin(), more->second.end());
            for (const Text value : values) {
                Values all = {{name, value}};
                if (traits.target == ProtocolTarget::kHost) all.emplace(u"Hostname", u"h");
                if (traits.target == ProtocolTarget::kSerialDevice) all.emplace(u"Serial Device", u"x");
                EXPECT_EQ(Build(row.name, all), Words());
                const VUnicodeString told = report.GetTextOneLine();
                EXPECT_TRUE(told.View().starts_with(u"\"" + std::u16string(name))) << VNarrowString(told).GetData();
                ++refused;
            }
        }
    }
    EXPECT_GT(refused, 500U);
}

TEST_F(LaunchCommandTest, RefusalsSayWhatIsWrong) {
    const std::tuple<Text, Values, LaunchFault> rows[] = {
        {u"TAPI", {{u"TAPI Phone Number", u"110"}}, kLaunchNoClient},
        {u"Raw", {{u"Hostname", u"h"}}, kLaunchOutOfRange},
        {u"SSH2", {}, kLaunchMissing},
        {u"SSH2", {{u"Hostname", u"h"}, {u"Firewall Name", u"Proxy"}}, kLaunchNoFirewall},
        {u"Serial", {{u"Serial Device", u"x"}, {u"Serial Parity", u"3"}}, kLaunchOutOfRange},
        {u"Local Shell", {{u"Local Shell Command", u"a \"b"}}, kLaunchOpenQuote},
        {u"Local Shell", {{u"Local Shell Command", u"  "}}, kLaunchMissing},
        {u"Local Shell", {{u"Local Shell Command", u" \"-c\" x"}}, kLaunchLeadingDash},
    };
    for (const auto& [protocol, values, fault] : rows) {
        EXPECT_EQ(Build(protocol, values), Words());
        EXPECT_EQ(report.GetCode(), fault) << VNarrowString(report.GetTextOneLine()).GetData();
    }
}

TEST_F(LaunchCommandTest, AFirewallIsGoneThroughOrToldNeverPassedBy) {
    const auto viaSsh = [](const std::string& proxy) {
        return Words{"ssh", "-o", "ProxyCommand=nc " + proxy + " %h %p", "-p", "22", "--", "h"};
    };
    // The protocol, the firewall's type and address, a jump host, the words.
    const std::tuple<Text, const char16_t*, const char16_t*, Text, Words, LaunchFault> rows[] = {
        {u"SSH2", u"SOCKSv5", u"proxy.example", u"", viaSsh("-X 5 -x 'proxy.example:1080'"), kLaunchFine},
        {u"SSH2", u"HTTP", u"fe80::1", u"", viaSsh("-X connect -x '[fe80::1]:1080'"), kLaunchFine},
        {u"SSH2", u"None", u"", u"", {"ssh", "-p", "22", "--", "h"}, kLaunchFine},
        {u"SSH2", u"SOCKSv5", u"p;reboot", u"", {}, kLaunchNoHostName},
        {u"SSH2", u"SOCKSv5", u"p' 'q", u"", {}, kLaunchNoHostName},
        {u"SSH2", u"SOCKSv5", u"fe80::1%eth0", u"", {}, kLaunchNoHostName},
        {u"SSH2", u"SOCKSv5", u"", u"", {}, kLaunchMissing},
        {u"SSH2", u"SOCKSv5", u"p", u"hop", {}, kLaunchFirewallAndJump},
        {u"SSH2", u"SOCKSv5_USERPASS", u"p", u"", {}, kLaunchFirewallPassword},
        {u"SSH2", u"Generic Proxy", u"p", u"", {}, kLaunchFirewallType},
        {u"SSH2", u"socksv5", u"p", u"", {}, kLaunchFirewallType},
        {u"Telnet", u"SOCKSv5", u"p", u"", {}, kLaunchFirewall},
    };
    for (const auto& [protocol, type, address, jumpHost, words, fault] : rows) {
        WithKey(u"Firewalls\\dmz", [&, kind = type, at = address](VProfileKey& key) {
            key.WriteString(u"Firewall Type", kind);
            key.WriteString(u"Firewall Address", at);
        });
        Values values = {{u"Hostname", u"h"}, {u"Firewall Name", u"dmz"}};
        if (!jumpHost.empty()) values.emplace(u"SSH Jump Host", jumpHost);
        EXPECT_EQ(Build(protocol, values), words);
        EXPECT_EQ(report.GetCode(), fault) << VNarrowString(report.GetTextOneLine()).GetData();
    }
}

TEST_F(LaunchCommandTest, TheApplicationDecidesTheSide) {
    // The application, both protocols, the program.
    const std::tuple<const char16_t*, const char16_t*, const char16_t*, std::string, LaunchFault> rows[] = {
        {u"NorHalden", u"SSH2", u"SFTP", "ssh", kLaunchFine},
        {u"Tessaly", u"SSH2", u"SFTP", "sftp", kLaunchFine},
        {u"connectctl", u"SSH2", u"SFTP", "ssh", kLaunchFine},
        {u"connectctl", u"None", u"SFTP", "sftp", kLaunchFine},
        {u"NorHalden", u"None", u"SFTP", "", kLaunchTransferOnly},
        {u"Tessaly", u"SSH2", u"None", "", kLaunchTerminalOnly},
        {u"NorHalden", u"None", u"None", "", kLaunchNoProtocol},
    };
    for (const auto& [application, terminal, transfer, program, fault] : rows) {
        InstallReferenceSuite(application, *factory);
        const auto session = Make(terminal);
        session->SetTransferProtocolName(transfer);
        for (ConnectConfig* config : {session->GetConnectConfig(), session->GetTransferConnectConfig()})
            if (config != nullptr) config->SetHostName(u"h");
        LaunchCommand command;
        report.Clear();
        EXPECT_EQ(BuildLaunchCommand(*session, command, report), fault == kLaunchFine);
        EXPECT_EQ(report.GetCode(), fault);
        EXPECT_EQ(command.arguments.empty() ? "" : command.arguments.front(), program);
    }
}

}  // namespace
}  // namespace connectdialog::test
