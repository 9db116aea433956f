// What reaches a client: connect, firewall, import, trace, buttons.
#include <filesystem>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <thread>

#include "profile/unitofwork.h"
#include "profile/vprofilekey.h"
#include "resources/storenames.h"
#include "tests/connectctl/toolfixture.h"
#include "tests/support/strings.h"

namespace connectdialog::test {
namespace {

using Json = nlohmann::json;

TEST_F(ToolTest, DryRunPrintsTheArgumentVectorAndWhatIsHostileReachesNoClient) {
    Seed();
    RunWell({"set", "zeta", "Username", "root"});
    const std::string line = RunWell({"connect", "zeta", "--dry-run"});
    EXPECT_EQ(line, "[\"ssh\",\"-p\",\"22\",\"-l\",\"root\",\"--\",\"zeta.example.net\"]\n");
    const Json described = Json::parse(RunWell({"connect", "zeta", "--dry-run", "--json"}));
    EXPECT_EQ(described["argv"], Json::parse(line));
    EXPECT_EQ(described["package"], "openssh-client");
    RunWell({"set", "zeta", "Hostname", "--", "-oProxyCommand=touch x"});
    for (const char* path : {"zeta", "Servers", "nobody"}) {
        RunBadly({"connect", path, "--dry-run"});
        RunBadly({"connect", path});
    }
}

TEST_F(ToolTest, ConnectBecomesTheClient) {
    Seed();
    const std::string client = scratch.WriteProgram("ssh", "printf '%s|' \"$0\" \"$@\"\nexit 7\n");
    environment = {"PATH=" + scratch.GetPath().string()};
    const ProcessResult result = Run({"connect", "zeta"});
    EXPECT_EQ(result.exitCode, 7);
    EXPECT_EQ(result.errors, "");
    EXPECT_TRUE(result.output.starts_with(client + "|") && result.output.ends_with("|--|zeta.example.net|"));

    environment = {"PATH=/nonexistent"};
    EXPECT_EQ(RunBadly({"connect", "zeta"}),
              "connectctl: The program \"ssh\" is not installed; the Debian package openssh-client has it\n");
}

TEST_F(ToolTest, AFirewallIsMadeSetUsedAndRemoved) {
    Seed();
    Transcript({
        {{"firewall", "new", "dmz"}, ""},
        {{"firewall", "new", "DMZ"}, "", 1},
        {{"firewall", "new", "none"}, "", 1},
        {{"firewall", "set", "dmz", "firewall type", "SOCKSv5"}, ""},
        {{"firewall", "set", "dmz", "Firewall Address", "proxy.example"}, ""},
        {{"firewall", "set", "dmz", "Firewall Type", "socksv5"}, "SOCKSv5_USERPASS", 1},
        {{"firewall", "set", "dmz", "Firewall Port", "70000"}, "65535", 1},
        {{"firewall", "set", "dmz", "Firewall Password", "on the command line"}, "", 1},
        {{"firewall", "ls"}, "dmz\n"},
        {{"set", "zeta", "Firewall Name", "dmz"}, ""},
    });
    const std::string shown = RunWell({"firewall", "show", "dmz"});
    EXPECT_TRUE(shown.starts_with("Firewall Type\ttext\tSOCKSv5\nFirewall Address\ttext\tproxy.example\n")) << shown;
    EXPECT_TRUE(shown.ends_with("Firewall Password\ttext\t(hidden)\n")) << shown;
    EXPECT_NE(RunWell({"connect", "zeta", "--dry-run"}).find("ProxyCommand=nc -X 5 -x 'proxy.example:1080' %h %p"),
              std::string::npos);
    Transcript({
        {{"firewall", "rm", "dmz"}, ""},
        {{"firewall", "ls"}, ""},
        {{"connect", "zeta"}, "\"dmz\"", 1},
        {{"buttons", "ls"}, "Default\n"},
        {{"buttons", "show"}, ""},
        {{"buttons", "check", "other"}, "", 1},
        {{"buttons", "edit", "other", "add", "1", "MENU_FIND", "Find, now"}, ""},
        {{"buttons", "edit", "other", "add", "1", "SEND", "List\\nfiles", "ls\\r", "", "x"}, ""},
        {{"buttons", "edit", "other", "move", "1", "2"}, ""},
        {{"buttons", "show", "other"}, "MENU_FIND\tFind, now\t\t\t\nSEND\tListfiles\tls\\r\t\tx\n"},
        {{"buttons", "edit", "other", "set", "1", "RUN", "Log", "logger"}, ""},
        {{"buttons", "edit", "other", "remove", "2"}, ""},
        {{"buttons", "show", "other"}, "RUN\tLog\tlogger\t\t\n"},
        {{"buttons", "edit", "other", "add", "3", "MENU_FIND", "x"}, "from 1 to 2", 1},
        {{"buttons", "edit", "other", "set", "1", "RUN", "x"}, "need an argument", 1},
        {{"buttons", "edit", "other", "set", "1", "menu_find", "x"}, "not known", 1},
        {{"buttons", "edit", "other", "set", "1", "DISABLED", "x"}, "does nothing", 1},
        {{"buttons", "edit", "other", "set", "1", "MENU_FIND", " \\n\u3000"}, "no text", 1},
        {{"buttons", "edit", "other", "set", "1", "MENU_FIND", "a\\nb\\nc"}, "two lines", 1},
        {{"buttons", "edit", "other", "remove", "0"}, "no place", 1},
        {{"buttons", "edit", "other", "remove"}, "wanted: buttons edit BAR remove PLACE", 1},
        {{"buttons", "edit", "other", "swap", "1"}, "\"swap\"", 1},
        {{"buttons", "edit", "", "add", "1", "MENU_FIND", "x"}, "needs a name", 1},
        {{"buttons", "edit", "third", "remove", "1"}, "no button bar", 1},
        {{"buttons", "show", "other"}, "RUN\tLog\tlogger\t\t\n"},
    });
    WithStore([] {
        const VStringArray lines = Strings({u"MENU_FIND,f,,,", u"SEND,s,,,", u"WHAT,w,,,", u"MENU_FIND,f,"});
        WriteToKey(kButtonBarsKey, [&](VProfileKey& key) { key.WriteMultiString(u"faulty", lines); });
    });
    const ProcessResult checked = Run({"buttons", "check", "faulty"});
    EXPECT_EQ(checked.exitCode, 1);
    EXPECT_EQ(checked.output,
              "2: SEND, RUN and LAUNCH need an argument: \"SEND,s,,,\"\n3: its function is not known, or does nothing: "
              "\"WHAT,w,,,\"\n"
              "4: it has no function, or another number of fields than 4 or 5: \"MENU_FIND,f,\"\n");
}

TEST_F(ToolTest, ButtonsAddedAtOnceAllStay) {
    constexpr int kRuns = 8;
    {
        std::vector<std::jthread> runs;
        for (int i = 0; i < kRuns; ++i)
            runs.emplace_back([this] { RunWell({"buttons", "edit", "Par", "add", "1", "MENU_FIND", "x"}); });
    }
    const std::string shown = RunWell({"buttons", "show", "Par"});
    EXPECT_EQ(std::ranges::count(shown, '\n'), kRuns);
}

TEST_F(ToolTest, ImportsHostsOnceAndADryRunWritesNothing) {
    const std::string file = scratch.Write("config",
                                           "Host web\n  HostName web.example.net\n  Port 2222\n  ProxyJump gate\n"
                                           "Host gate\n  User jump\nHost -oBad\nHost *\n  User root\n  Frobnicate\n");
    const ProcessResult dry = Run({"import", "openssh", file, "--dry-run"});
    EXPECT_EQ(dry.exitCode, 0);
    EXPECT_TRUE(dry.output.starts_with("dry run, 2 made, 0 updated, 0 left alone, 1 skipped\nskipped -oBad: "));
    EXPECT_NE(dry.errors.find(file + ":10: "), std::string::npos) << dry.errors;
    const Json json = Json::parse(Run({"import", "openssh", file, "--dry-run", "--json"}).output);
    EXPECT_EQ(json["made"], 2);
    EXPECT_EQ(json["hosts"][0]["path"], "web");
    EXPECT_FALSE(std::filesystem::exists(StoreFile()));

    Run({"import", "openssh", file, "--into", "Imported"});
    EXPECT_EQ(Json::parse(RunWell({"connect", "Imported\\web", "--dry-run"})),
              (Json{"ssh", "-p", "2222", "-J", "gate", "-l", "root", "--", "web.example.net"}));
    const std::string before = ReadFile(StoreFile());
    const std::string again = Run({"import", "openssh", file, "--into", "Imported\\"}).output;
    EXPECT_TRUE(again.starts_with("0 made, 0 updated, 2 left alone, 1 skipped\n")) << again;
    Transcript({
        {{"import", "openssh", scratch / "absent"}, "", 1},
        {{"import", "openssh", file, "--into", "Imported\\web"}, "", 1},
        {{"import", "openssh", file, "--into", "a\\\\b"}, "", 1},
        {{"import", "openssh", file, "--into", "a:b"}, "", 1},
    });
    EXPECT_EQ(ReadFile(StoreFile()), before);
}

TEST_F(ToolTest, ATemplateOfALogFilesNameIsExpandedOrExplained) {
    environment = {"TRACE_FOLDER=/tmp/\x1b"};
    EXPECT_THAT(RunWell({"trace", "%TRACE_FOLDER%/log-%Y%M%D-%h%m%s.%t-100%%"}),
                testing::MatchesRegex("/tmp/<U\\+001B>/log-2[0-9]{3}[01][0-9][0-3][0-9]-"
                                      "[0-2][0-9][0-5][0-9][0-6][0-9]\\.[0-9]{3}-100%\n"));
    Transcript({
        {{"trace", "%NONE%.log"}, "\"%NONE%\" is neither a token nor a variable that is set; %% is a percent sign", 1},
        {{"trace", "100%"}, "the template ends with a lone %; %% is a percent sign", 1},
        {{"trace", "\xff"}, "", 1},
    });
}

}  // namespace
}  // namespace connectdialog::test
