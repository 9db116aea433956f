#include "suite/protocols/launchcommand.h"

#include <cstdlib>

#include "foundation/vnarrowstring.h"
#include "suite/protocols/launchchecks.h"
#include "suite/protocols/launchmessages.h"
#include "suite/protocols/protocoltraits.h"
#include "tests/suite/suitetest.h"

namespace connectdialog::test {
namespace {

using Words = std::vector<std::string>;

class LaunchCommandTest : public SuiteTest {
  protected:
    /// What the protocol's client is started with once the host is "h" and `edit` was done.
    static Words Build(const char16_t* protocol, const std::function<void(ProtocolConfig&)>& edit = nullptr) {
        const auto session = Make(protocol);
        ProtocolConfig& config = Protocol(*session);
        if (config.GetTraits().target == ProtocolTarget::kHost) config.SetHostName(u"h");
        if (edit) edit(config);
        LaunchCommand command;
        VReportMessageParams report;
        const bool isBuilt = BuildLaunchCommand(*session, command, report);
        EXPECT_EQ(isBuilt, !command.arguments.empty());
        code = report.GetCode();
        text = report.GetTextOneLine();
        return command.arguments;
    }
    static inline std::uint32_t code = 0;
    static inline VUnicodeString text;
};

TEST_F(LaunchCommandTest, EachProtocolStartsItsClient) {
    struct Row {
        const char16_t* protocol;
        std::function<void(ProtocolConfig&)> edit;
        Words words;
    };
    const auto user = [](ProtocolConfig& config) { config.GetRemoteHost().SetUsername(u"DOM\\u"); };
    const auto address = [](ProtocolConfig& config) { config.SetHostName(u"[fe80::1%eth0]"); };
    const Row rows[] = {
        {u"SSH2", nullptr, {"ssh", "-p", "22", "--", "h"}},
        {u"SSH2",
         [](ProtocolConfig& config) {
             config.GetRemoteHost().SetUsername(u"u");
             config.SetPort(2222);
             ProtocolSettings& settings = config.EditSettings();
             settings.sshIdentityFile.Set(u"\\home\\my keys\\id"_v);
             settings.sshJumpHost.Set(u"a@j:24,[::1]:25"_v);
             settings.sshForwardAgent.Set(true);
             settings.sshForwardX11.Set(true);
             settings.sshRemoteCommand.Set(u"tail -f \"$LOG\" | less"_v);
         },
         {"ssh", "-p", "2222", "-i", "/home/my keys/id", "-J", "a@j:24,[::1]:25", "-l", "u", "-A", "-X", "-t", "--",
          "h", "tail -f \"$LOG\" | less"}},
        {u"SSH2", address, {"ssh", "-p", "22", "--", "fe80::1%eth0"}},
        {u"SSH1", user, {"ssh1", "-1", "-p", "22", "-l", "DOM\\u", "--", "h"}},
        {u"Telnet", user, {"telnet", "-l", "DOM\\u", "--", "h", "23"}},
        {u"Telnet/SSL", nullptr, {"telnet-ssl", "-z", "ssl", "--", "h", "992"}},
        {u"RLogin", user, {"rsh-redone-rlogin", "-l", "DOM\\u", "-p", "513", "--", "h"}},
        {u"Raw", [](ProtocolConfig& config) { config.SetPort(7); }, {"nc", "--", "h", "7"}},
        {u"Serial",
         [](ProtocolConfig& config) {
             config.SetHostName(u"ttyUSB0");
             config.EditSettings().serialParity.Set(2);
             config.EditSettings().serialFlowControl.Set(1);
         },
         {"picocom", "--baud", "9600", "--databits", "8", "--parity", "e", "--stopbits", "1", "--flow", "h", "--",
          "/dev/ttyUSB0"}},
        {u"Local Shell",
         [](ProtocolConfig& config) { config.EditSettings().localShellCommand.Set(u"htop  -d \"5 0\" $HOME ;x"_v); },
         {"htop", "-d", "5 0", "$HOME", ";x"}},
        {u"SFTP", user, {"sftp", "-P", "22", "--", "DOM\\u@h"}},
        {u"SCP", address, {"sftp", "-P", "22", "--", "[fe80::1%eth0]"}},
        {u"FTP", user, {"lftp", "-p", "21", "-u", "DOM\\u", "ftp://h"}},
        {u"FTP/SSL (implicit)", address, {"lftp", "-p", "990", "ftps://[fe80::1%25eth0]"}},
        {u"FTP/SSL (explicit)",
         nullptr,
         {"lftp", "-e", "set ftp:ssl-force yes; set ftp:ssl-protect-data yes", "-p", "21", "ftp://h"}},
    };
    for (const Row& row : rows) EXPECT_EQ(Build(row.protocol, row.edit), row.words);
}

TEST_F(LaunchCommandTest, TheUsersShellNeedsAPath) {
    const char* before = std::getenv("SHELL");
    const std::string kept = before != nullptr ? before : "";
    setenv("SHELL", "/bin/other shell", 1);
    EXPECT_EQ(Build(u"Local Shell"), Words{"/bin/other shell"});
    setenv("SHELL", "-c evil", 1);
    EXPECT_EQ(Build(u"Local Shell"), Words{"/bin/sh"});
    if (before != nullptr)
        setenv("SHELL", kept.c_str(), 1);
    else
        unsetenv("SHELL");
}

/// Whatever the protocol and wherever the value stands: it is refused, and the report names its setting.
TEST_F(LaunchCommandTest, HostileValuesAreRefusedByEveryProtocol) {
    constexpr std::u16string_view kOptions[] = {u"-oProxyCommand=touch x", u"-", u"--", u"-e!sh"};
    constexpr std::u16string_view kControls[] = {u"a\nb", u"a\x1B[2Jb", u"a\rb", u"a\u009B1mb", u"a\u202Eb"};
    constexpr std::u16string_view kNoHosts[] = {u"a b",     u"a;b",       u"$(id)",  u"`id`",         u"a|b",  u"a&b",
                                                u"a'b",     u"a\"b",      u"a/b",    u"a\\b",         u"u@h",  u"h:22",
                                                u"ssh://h", u"a,b",       u"a%b",    u"::1%",         u"[::1", u"*",
                                                u"[a]",     u"::1%$(id)", u"\u00E4", u"ftp://h/;!sh", u" h",   u"a#b"};
    constexpr std::u16string_view kNoUsers[] = {u"a b",  u"a;b", u"$(id)", u"`id`",     u"a|b", u"a'b", u"a:b",
                                                u"u,pw", u"a\\", u"a/b",   u"a\u3000b", u"a%h", u"a#b", u"a*"};
    constexpr std::u16string_view kNoJumps[] = {u"a b",  u"a;b",     u"$(id)@h", u"u@-h", u"-oX@h", u"h,",
                                                u",h",   u"h:0",     u"h:x",     u"u@",   u"h,-h",  u"a\\b@h",
                                                u"[::1", u"h:65536", u"::1",     u"@h"};
    const auto refuses = [](const ProtocolTraits& traits, std::u16string_view name, std::u16string_view value,
                            auto set) {
        EXPECT_EQ(Build(VUnicodeString(traits.name).GetData(), [&](ProtocolConfig& config) { set(config, value); }),
                  Words());
        EXPECT_NE(code, 0U);
        EXPECT_NE(text.Find((u"\"" + VUnicodeString(name) + u"\"").GetData()), VUnicodeString::kNotFound)
            << VNarrowString(text).GetData();
    };
    const auto all = [&](auto& values, const ProtocolTraits& traits, std::u16string_view name, auto set) {
        for (const auto value : values) refuses(traits, name, value, set);
    };
    const auto setHost = [](ProtocolConfig& config, std::u16string_view value) { config.SetHostName(value); };
    const auto setUser = [](ProtocolConfig& config, std::u16string_view value) {
        config.GetRemoteHost().SetUsername(value);
    };
    const auto textSetter = [](VProfileText ProtocolSettings::*member) {
        return [member](ProtocolConfig& config, std::u16string_view value) {
            if (config.GetTraits().target == ProtocolTarget::kSerialDevice) config.SetHostName(u"/dev/x");
            (config.EditSettings().*member).Set(value);
        };
    };
    for (const ConnectProtocolTableElement& row : GetReferenceProtocolTable()) {
        const ProtocolTraits& traits = *FindProtocolTraits(row.name);
        const auto checkTexts = [&](std::u16string_view name, auto set) {
            all(kOptions, traits, name, set);
            all(kControls, traits, name, set);
        };
        if (traits.target == ProtocolTarget::kHost) {
            checkTexts(u"Hostname", setHost);
            all(kNoHosts, traits, u"Hostname", setHost);
            refuses(traits, u"Hostname", u"", setHost);
            refuses(traits, u"Hostname", std::u16string(300, u'h'), setHost);
        }
        if (traits.target == ProtocolTarget::kHost && traits.client != LaunchClient::kRaw) {
            checkTexts(u"Username", setUser);
            all(kNoUsers, traits, u"Username", setUser);
        }
        if (traits.port == &ProtocolSettings::sshPort) {
            checkTexts(u"SSH Identity File", textSetter(&ProtocolSettings::sshIdentityFile));
            checkTexts(u"SSH Jump Host", textSetter(&ProtocolSettings::sshJumpHost));
            all(kNoJumps, traits, u"SSH Jump Host", textSetter(&ProtocolSettings::sshJumpHost));
        }
        if (traits.client == LaunchClient::kSsh)
            checkTexts(u"SSH Remote Command", textSetter(&ProtocolSettings::sshRemoteCommand));
        if (traits.client == LaunchClient::kSerial)
            checkTexts(u"Serial Device", textSetter(&ProtocolSettings::serialDevice));
        if (traits.client == LaunchClient::kShell)
            checkTexts(u"Local Shell Command", textSetter(&ProtocolSettings::localShellCommand));
    }
}

TEST_F(LaunchCommandTest, RefusalsSayWhatIsWrong) {
    struct Row {
        const char16_t* protocol;
        std::function<void(ProtocolConfig&)> edit;
        LaunchFault fault;
    };
    const Row rows[] = {
        {u"TAPI", [](ProtocolConfig& config) { config.SetHostName(u"110"); }, kLaunchNoClient},
        {u"Marks", nullptr, kLaunchNoClient},
        {u"Raw", nullptr, kLaunchOutOfRange},
        {u"Raw", [](ProtocolConfig& config) { config.SetHostName(u"-x"); }, kLaunchLeadingDash},
        {u"SSH2", [](ProtocolConfig& config) { config.SetPort(0); }, kLaunchOutOfRange},
        {u"SSH2", [](ProtocolConfig& config) { config.SetHostName(u""); }, kLaunchMissing},
        {u"SSH2", [](ProtocolConfig& config) { config.GetRemoteHost().SetFirewallName(u"Proxy"); }, kLaunchFirewall},
        {u"Serial", nullptr, kLaunchMissing},
        {u"Serial", [](ProtocolConfig& config) { config.EditSettings().serialParity.Set(-1); }, kLaunchOutOfRange},
        {u"Local Shell", [](ProtocolConfig& config) { config.EditSettings().localShellCommand.Set(u"a \"b"_v); },
         kLaunchOpenQuote},
        {u"Local Shell", [](ProtocolConfig& config) { config.EditSettings().localShellCommand.Set(u"  "_v); },
         kLaunchMissing},
        {u"Local Shell", [](ProtocolConfig& config) { config.EditSettings().localShellCommand.Set(u" \"-c\" x"_v); },
         kLaunchLeadingDash},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(Build(row.protocol, row.edit), Words());
        EXPECT_EQ(code, row.fault) << VNarrowString(text).GetData();
    }
}

TEST_F(LaunchCommandTest, TheApplicationDecidesTheSide) {
    struct Row {
        const char16_t* application;
        const char16_t* terminal;
        const char16_t* transfer;
        std::string program;
        LaunchFault fault;
    };
    const Row rows[] = {
        {u"NorHalden", u"SSH2", u"SFTP", "ssh", kLaunchFine},
        {u"Tessaly", u"SSH2", u"SFTP", "sftp", kLaunchFine},
        {u"connectctl", u"SSH2", u"SFTP", "ssh", kLaunchFine},
        {u"connectctl", u"None", u"SFTP", "sftp", kLaunchFine},
        {u"NorHalden", u"None", u"SFTP", "", kLaunchTransferOnly},
        {u"Tessaly", u"SSH2", u"None", "", kLaunchTerminalOnly},
        {u"NorHalden", u"None", u"None", "", kLaunchNoProtocol},
        {u"connectctl", u"None", u"None", "", kLaunchNoProtocol},
    };
    for (const Row& row : rows) {
        InstallReferenceSuite(row.application, *factory);
        const auto session = Make(row.terminal);
        session->SetTransferProtocolName(row.transfer);
        for (ConnectConfig* config : {session->GetConnectConfig(), session->GetTransferConnectConfig()})
            if (config != nullptr) config->SetHostName(u"h");
        LaunchCommand command;
        VReportMessageParams report;
        EXPECT_EQ(BuildLaunchCommand(*session, command, report), row.fault == kLaunchFine);
        EXPECT_EQ(report.GetCode(), row.fault);
        EXPECT_EQ(command.arguments.empty() ? "" : command.arguments.front(), row.program);
    }
}

TEST_F(LaunchCommandTest, AMissingClientIsNamedWithItsPackage) {
    LaunchCommand command{{"no-such-client-anywhere", "h"}, "some-package", u""};
    VReportMessageParams report;
    EXPECT_FALSE(BecomeClient(command, report));
    text = report.GetTextOneLine();
    EXPECT_NE(text.Find(u"no-such-client-anywhere"), VUnicodeString::kNotFound);
    EXPECT_NE(text.Find(u"some-package"), VUnicodeString::kNotFound);
    command = {{"/proc/self/status"}, "", u""};
    EXPECT_FALSE(BecomeClient(command, report));
    EXPECT_EQ(report.GetCode(), kLaunchNotInstalled);
}

}  // namespace
}  // namespace connectdialog::test
