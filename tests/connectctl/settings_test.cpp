// Settings of sessions, and whole trees in texts.
#include <nlohmann/json.hpp>

#include "config/isessionconfig.h"
#include "imports/configpanels.h"
#include "profile/vprofileblowfishstring.h"
#include "profile/vprofilemultilinestring.h"
#include "sessiondb/entryoperations.h"
#include "sessiondb/profilefolderdata.h"
#include "sessiondb/sessiontree.h"
#include "support/storetools.h"
#include "tests/connectctl/toolfixture.h"

namespace connectdialog::test {
namespace {

using Json = nlohmann::json;

TEST_F(ToolTest, WhatIsSetIsGot) {
    Seed();
    // The name, what is set, what get prints, and what get --json gives.
    const std::tuple<std::string, std::string, std::string, Json> rows[] = {
        {"Use Title Bar", "yes", "true", true},
        {"Auto Reconnect", "Global", "global", "global"},
        {"Restart Data Size", "-2147483648", "-2147483648", -2147483647 - 1},
        {"Trace Level", "4294967295", "4294967295", 4294967295U},
        {"Title Bar", "[a, b]", "[a, b]", "[a, b]"},
        {"Title Bar", "größe 主机 \"q\" \\", "größe 主机 \"q\" \\", "größe 主机 \"q\" \\"},
        {"Title Bar", "a\tb\x1b", "a<U+0009>b<U+001B>", "a\tb\x1b"},
        {"Title Bar", std::string(10000, 'x'), std::string(10000, 'x'), std::string(10000, 'x')},
        {"Tessaly Bookmarks", R"(["a\nb","","\u4e3b"])", R"(["a\nb","","主"])", {"a\nb", "", "主"}},
        {"Description", "one\r\ntwo", R"(["one","two"])", {"one", "two"}},
        {"Hostname", "other.example.net", "other.example.net", "other.example.net"},
    };
    for (const auto& [name, value, text, json] : rows) {
        EXPECT_EQ(RunWell({"set", "Servers\\db", name, value}), "") << name << ": " << value;
        EXPECT_EQ(RunWell({"get", "Servers\\db", name}), text + "\n") << name;
        EXPECT_EQ(Json::parse(RunWell({"get", "--json", "Servers\\db", name}))["value"], json) << name;
    }
    RunWell({"set", "zeta", "Keymap v3", R"(["N VK_A MENU_COPY"])"});
    EXPECT_NE(RunWell({"keymap", "show", "zeta"}).find("MENU_COPY\n"), std::string::npos);
    Transcript({
        {{"set", "zeta", "Keymap v3", "[]"}, ""},
        {{"get", "zeta", "Keymap v3"}, "[]\n"},
        {{"set", "zeta", "Protocol Name", "telnet"}, ""},
        {{"get", "zeta", "Protocol Name"}, "Telnet\n"},
        {{"get", "zeta", "Hostname"}, "zeta.example.net\n"},
        {{"set", "Default", "Idle Timeout", "77"}, ""},
        {{"get", "default", "Idle Timeout"}, "77\n"},
        {{"set", "Default", "Hostname", "a.example.net"}, "this session does not take a.example.net", 1},
    });
}

TEST_F(ToolTest, ValuesThatDoNotFitAreRefusedAndNothingIsStored) {
    Seed();
    RunWell({"set", "zeta", "Tessaly Bookmarks", R"(["kept"])"});
    const std::string before = RunWell({"show", "zeta"});
    const std::tuple<std::string, std::string, std::string> rows[] = {
        {"Use Title Bar", "maybe", "\"Use Title Bar\" is bool (true or false), not \"maybe\""},
        {"Auto Reconnect", "2", "\"Auto Reconnect\" is tri-state (off, on or global), not \"2\""},
        {"Restart Data Size", "2147483648", "int32 (-2147483648 to 2147483647), not \"2147483648\""},
        {"Trace Level", "-1", "uint32 (0 to 4294967295), not \"-1\""},
        {"Cols", "32768", "int16 (-32768 to 32767), not \"32768\""},
        {"Idle Timeout", "3", "does not take 3: it would read 10"},
        {"Is Session", "false", "does not take false"},
        {"Remote ListView State", "garbage", "numbers with commas between"},
        {"Tessaly Bookmarks", "[\"a\"", "\"Tessaly Bookmarks\" is list (a JSON array of texts, or one text a line)"},
        {"Protocol Name", "Gopher", "is one of \"None\", \"SSH2\""},
        {"Hostnam", "x", "has no setting \"Hostnam\"; did you mean \"Hostname\"?"},
        {std::string(10000, 'x'), "x", "has no setting \"xxx"},
        {"Title Bar", "\xff", "not well-formed UTF-8"},
    };
    for (const auto& [name, value, complaint] : rows) Transcript({{{"set", "zeta", name, "--", value}, complaint, 1}});
    EXPECT_EQ(RunWell({"show", "zeta"}), before);
}

TEST_F(ToolTest, ShowTellsWhereAValueComesFrom) {
    WithStore([] {
        WithKey(u"Sessions\\s", [](VProfileKey& key) {
            key.WriteDword(u"Is Session", 1);
            key.WriteDword(u"Rows", 30);
            key.WriteDword(u"Cols", 20000);
            key.WriteDword(u"Auto Reconnect", 7);
            key.WriteString(u"Scrollback", u"many");
            key.WriteString(u"Emulation", u"SCO-ANSI");
            key.WriteString(u"Keymap Name", u"Linux");
        });
    });
    const std::string shown = RunWell({"show", "s"});
    for (const char* line :
         {"Rows\tint32\t30\tstored", "Cols\tint16\t1000\tcorrected", "Auto Reconnect\ttri-state\tglobal\tcorrected",
          "Scrollback\tint32\t500\tcorrected", "Emulation\ttext\tSCOANSI\tcorrected", "ANSI Color\tbool\ttrue\tdefault",
          "Use Alternate Keyboard\tbool\ttrue\tdefault",
          "Page Margins\trecord\t{\"bottom\":0.5,\"left\":0.5,\"right\":0.5,\"top\":0.5}\tdefault"})
        EXPECT_NE(shown.find(std::string("\n") + line + '\n'), std::string::npos) << line;
}

TEST_F(ToolTest, TheTemplateIsShownAndNotMadeByTheLook) {
    const std::string fresh = RunWell({"default"});
    EXPECT_TRUE(fresh.starts_with("Is Session\tbool\ttrue\tdefault\n")) << fresh;
    EXPECT_EQ(RunWell({"ls"}), "");
    RunWell({"set", "Default", "Rows", "50"});
    EXPECT_NE(RunWell({"default"}).find("\nRows\tint32\t50\tstored\n"), std::string::npos);
    EXPECT_EQ(Json::parse(RunWell({"default", "--json"}))["path"], "Default");
}

TEST_F(ToolTest, DiffPrintsWhatDiffersAndTellsByItsExitCode) {
    Seed();
    const auto diff = [&](const std::string& left, const std::string& right) { return Run({"diff", left, right}); };
    EXPECT_EQ(RunWell({"diff", "zeta", "zeta"}), "");
    RunWell({"set", "zeta", "Hostname", "db.example.net"});
    RunWell({"set", "zeta", "Title Bar", "a\tb"});
    WithStore([] {
        for (const auto& [path, password] : {std::pair(u"zeta"_v, u"hunter2"_v),
                                             {u"Servers\\db"_v, u"hunter2"_v},
                                             {u"Servers\\Web\\beta"_v, u"other"_v}}) {
            const VRef<ISessionConfig> session = OpenSession(path);
            dynamic_cast<VProfileBlowfishString&>(*session->FindValue(u"Monitor Password")).SetText(password);
            EXPECT_TRUE(SaveSession(*session));
        }
    });
    const ProcessResult differ = diff("Servers\\db", "zeta");
    EXPECT_EQ(differ.exitCode, 1);
    EXPECT_EQ(differ.errors, "");
    EXPECT_EQ(differ.output, "Title Bar\t\ta<U+0009>b\n") << "equal passwords are stored differently";
    const ProcessResult secrets = diff("Servers\\Web\\beta", "zeta");
    EXPECT_NE(secrets.output.find("\nMonitor Password\t(hidden)\t(hidden)\n"), std::string::npos) << secrets.output;

    RunWell({"set", "Servers\\db", "Protocol Name", "telnet"});
    const ProcessResult other = diff("Servers\\db", "zeta");
    EXPECT_NE(other.output.find("Telnet Port\t23\t(none)\n"), std::string::npos) << other.output;
    EXPECT_NE(other.output.find("SSH Forward X11\t(none)\tfalse\n"), std::string::npos) << other.output;
    const Json json = Json::parse(Run({"diff", "--json", "Servers\\db", "zeta"}).output);
    EXPECT_EQ(json[0]["name"], "Protocol Name");
    EXPECT_EQ(json[0]["left"]["value"], "Telnet");
    EXPECT_FALSE(json.back().contains("left"));
    RunBadly({"diff", "zeta"}, 2);
}

class ExportTest : public ToolTest {
  protected:
    /// Runs connectctl on another store than the scratch store.
    std::string RunOther(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {CONNECTCTL_PROGRAM, "--store", "sqlite:" + (scratch / "other.db")});
        const ProcessResult result = RunProcess(arguments, environment);
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        return result.output;
    }
};

/// A tree with what is easily lost: orders, open folders, odd names, lists, records, values of a protocol that is not
/// selected, a password.
void SeedOddTree() {
    VRef<GlobalConfig> global;
    ASSERT_TRUE(GetGlobalConfig(global, -1));
    global->sessionArrangementMode.Set(static_cast<int>(SessionArrangement::kManual));
    const std::u16string half = std::u16string(u"half") + char16_t{0xD800};
    for (const VUnicodeString& name : {u"z"_v, u"a:b"_v, VUnicodeString(half), u".dot"_v, u"a"_v})
        AddSession(u"F\\deep", name, u"h.example.net");
    ASSERT_TRUE(AddFolderEntry(u"F", u"second", VUnicodeString(), true));
    ASSERT_FALSE(ArrangeEntry(u"F\\second", u"deep", false).IsEmpty());
    ASSERT_TRUE(WriteIsExpanded(u"F\\deep", true));
    const auto session = OpenSession(u"F\\deep\\z");
    auto* description = dynamic_cast<VProfileMultiLineString*>(session->FindValue(u"Description"));
    ASSERT_NE(description, nullptr);
    description->SetText(VUnicodeString(u"\x1b[1mfirst\n" + half));
    auto* password = dynamic_cast<VProfileBlowfishString*>(session->FindValue(u"Monitor Password"));
    ASSERT_NE(password, nullptr);
    password->SetText(u"correct horse");
    session->SetProtocolName(u"Telnet");
    ASSERT_TRUE(SaveSession(*session));
}

TEST_F(ExportTest, ATreeComesBackAsItWas) {
    WithStore(SeedOddTree);
    const std::string file = scratch / "tree.json";
    for (const char* path : {"", "F", "F\\deep\\z"}) {
        const std::string text = RunWell({"export", path, "--with-secrets"});
        EXPECT_EQ(RunWell({"export", path, "--with-secrets", "-o", file}), "");
        EXPECT_EQ(text, ReadFile(file));
        EXPECT_EQ(ModeOf(file), 0600U);
        std::filesystem::remove_all(scratch / "other.db");
        RunOther({"import", "json", file});
        const Json before = Json::parse(text);
        const Json after = Json::parse(RunOther({"export", "--with-secrets"}));
        // An export of less than the root comes back below it.
        const std::size_t extra = *path == '\0' ? 0 : 1;
        ASSERT_EQ(after["entries"].size(), before["entries"].size() + extra);
        for (std::size_t i = 0; i < before["entries"].size(); ++i)
            EXPECT_EQ(after["entries"][i + extra], before["entries"][i]);
    }
    EXPECT_EQ(RunOther({"get", "z", "Protocol Name"}), "Telnet\n");
}

TEST_F(ExportTest, SecretsLeaveOnlyWhenAskedForAndComeBack) {
    WithStore(SeedOddTree);
    EXPECT_EQ(RunWell({"export"}).find("Monitor Password"), std::string::npos);
    const std::string text = RunWell({"export", "F\\deep\\z", "--with-secrets"});
    EXPECT_EQ(text.find("correct horse"), std::string::npos) << "enciphered as in the store";
    RunWell({"mkdir", "G"});
    RunWell({"import", "json", scratch.Write("z.json", text), "--into", "G"});
    WithStore([] {
        const auto session = OpenSession(u"G\\z");
        auto* password = dynamic_cast<VProfileBlowfishString*>(session->FindValue(u"Monitor Password"));
        ASSERT_NE(password, nullptr);
        EXPECT_EQ(password->GetText(), u"correct horse");
    });
}

TEST_F(ExportTest, AFaultyTextIsRefusedWithItsPlaceAndChangesNothing) {
    Seed();
    const std::string head = R"({"format":"connectdialog entries","version":1,"entries":[)";
    const std::string folder = R"({"path":"n","type":"folder"},)";
    const auto session = [](const std::string& values) { return R"({"path":"n","type":"session","values":)" + values; };
    const std::pair<std::string, std::string> rows[] = {
        {"", "line 1, column 1"},
        {"[]", "the text is no export"},
        {R"({"format":"connectdialog entries","version":2,"entries":[]})", "no export that this program reads"},
        {R"({"format":"connectdialog entries","version":1})", "it has no entries"},
        {std::string(200000, '['), "nested too deep"},
        {head + folder + "7]}", "entry 2: it is no object"},
        {head + R"({"path":"n"}]})", "entry 1 (\"n\"): its type"},
        {head + folder + R"({"path":"","type":"folder"}]})", "entry 2 (\"\"): the root is a folder and stands first"},
        {head + R"({"path":"a\u0000b","type":"folder"}]})", "entry 1: it has no path"},
        {head + folder + R"({"path":"n\\","type":"folder"}]})", "entry 2 (\"n\\\"): the path has an empty name"},
        {head + folder + R"({"path":"N","type":"folder"}]})", "entry 2 (\"N\"): N already exists in the target folder"},
        {head + folder + R"({"path":"n\\__folderdata__","type":"folder"}]})", "no entry can have that name"},
        {head + R"({"path":"n\\m","type":"folder"}]})", "its folder does not stand before it"},
        {head + R"({"path":"zeta","type":"session","values":{}}]})", "zeta already exists in the target folder"},
        {head + R"({"path":"n","type":"folder","expanded":1}]})", "expanded is neither true nor false"},
        {head + session(R"({"Hostname":-1}}]})"), "value \"Hostname\" is no number"},
        {head + session(R"({"Hostname":{"utf16":"00410"}}}]})"), "value \"Hostname\" is no number"},
        {head + session(R"({"Idle Timeout":"soon"}}]})"), "does not take value \"Idle Timeout\""},
        {head + session(R"({"No Such Value":3}}]})"), "a session has no value \"No Such Value\""},
    };
    for (const auto& [text, told] : rows) {
        Transcript({{{"import", "json", scratch.Write("in.json", text)}, told, 1},
                    {{"tree"}, "Servers\\\n  Web\\\n    alpha\n    beta\n  db\nzeta\n"}});
    }
    const std::string good = head + folder + R"({"path":"n\\s","type":"session","values":{"Hostname":"h"}}]})";
    const std::string file = scratch.Write("good.json", good);
    EXPECT_EQ(RunWell({"import", "json", file, "--dry-run"}), "dry run, 1 folders and 1 sessions made\n");
    RunBadly({"get", "n\\s", "Hostname"});
}

}  // namespace
}  // namespace connectdialog::test
