// The tree: what is listed and found, and what changes it.
#include <nlohmann/json.hpp>

#include "config/isessionconfig.h"
#include "sessiondb/runningsessions.h"
#include "sessiondb/sessiontree.h"
#include "tests/connectctl/toolfixture.h"

namespace connectdialog::test {
namespace {

using Json = nlohmann::json;

TEST_F(ToolTest, ListsFoldersBeforeSessions) {
    Seed();
    Transcript({
        {{"ls"}, "Servers\\\nzeta\n"},
        {{"ls", "servers\\WEB\\"}, "alpha\nbeta\n"},
        {{"ls", "-R"}, "Servers\\\nServers\\Web\\\nServers\\Web\\alpha\nServers\\Web\\beta\nServers\\db\nzeta\n"},
        {{"ls", "--recursive", "Servers\\Web"}, "Servers\\Web\\alpha\nServers\\Web\\beta\n"},
        {{"tree"}, "Servers\\\n  Web\\\n    alpha\n    beta\n  db\nzeta\n"},
        {{"tree", "Servers\\Web"}, "alpha\nbeta\n"},
    });
}

TEST_F(ToolTest, ListingIsAlsoJson) {
    Seed();
    const Json flat = Json::parse(RunWell({"ls", "-R", "--json", "Servers"}));
    EXPECT_EQ(flat.size(), 4U);
    EXPECT_EQ(flat[1], Json({{"name", "alpha"}, {"path", "Servers\\Web\\alpha"}, {"type", "session"}}));
    const Json tree = Json::parse(RunWell({"tree", "--json"}));
    EXPECT_EQ(tree[0]["children"][0]["children"][1]["path"], "Servers\\Web\\beta");
    EXPECT_EQ(tree[1]["type"], "session");
}

TEST_F(ToolTest, AnAbsentStoreIsEmptyAndStaysAbsent) {
    EXPECT_EQ(RunWell({"tree"}), "");
    EXPECT_EQ(Json::parse(RunWell({"ls", "--json"})), Json::array());
    EXPECT_NE(RunBadly({"show", "alpha"}).find("no session or folder \"alpha\""), std::string::npos);
    EXPECT_EQ(RunProcess({"/bin/ls", StoreFile()}).output, "");
}

// A name cannot drive the terminal, and what is printed leads back to the entry.
TEST_F(ToolTest, HostileNamesAreEscaped) {
    const std::pair<std::u16string, std::string> rows[] = {
        {u"a\x1b[31mred", "a<U+001B>[31mred"},
        {u"line\nbreak\ttab", "line<U+000A>break<U+0009>tab"},
        {u"csi\u009b2J", "csi<U+009B>2J"},
        {u"gnp\u202Eexe", "gnp<U+202E>exe"},
        {std::u16string(u"lone") + char16_t{0xD800}, "lone<U+D800>"},
        {u"<U+0041>", "<U+0041>"},
        {u"主机 \U0001F600", "主机 \U0001F600"},
        {std::u16string(10000, u'n'), std::string(10000, 'n')},
    };
    WithStore([&] {
        for (const auto& [name, shown] : rows) AddSession(u"Hostile"_v, VUnicodeString(name), u"h.example.net"_v);
    });
    const std::string listing = "\n" + RunWell({"ls", "Hostile"});
    for (const auto& [name, shown] : rows) {
        EXPECT_NE(listing.find("\n" + shown + "\n"), std::string::npos) << shown;
        EXPECT_EQ(RunWell({"get", "Hostile\\" + shown, "Hostname"}), "h.example.net\n") << shown;
    }
    EXPECT_EQ(listing.find('\x1b'), std::string::npos);
    const std::string json = RunWell({"ls", "--json", "Hostile"});
    EXPECT_EQ(json.find("\u009b"), std::string::npos);
    EXPECT_NE(Json::parse(json).dump().find("csi\u009b2J"), std::string::npos);
}

constexpr char kSeeded[] = "Servers\\\n  Web\\\n    alpha\n    beta\n  db\nzeta\n";

class TreeCommandsTest : public ToolTest {
  protected:
    /// The one line that a refused run tells; the tree stays as it is.
    void ExpectRefusal(const std::vector<std::string>& arguments, const std::string& text) const {
        const std::string before = RunWell({"tree"});
        EXPECT_EQ(RunBadly(arguments), "connectctl: " + text + "\n") << ::testing::PrintToString(arguments);
        EXPECT_EQ(RunWell({"tree"}), before);
    }
};

TEST_F(TreeCommandsTest, MakeAndCopyAndMoveAndDelete) {
    Seed();
    const std::pair<ToolRun, std::string> rows[] = {
        // What is run, and the tree behind it.
        {{{"mkdir", "New\\"}, ""}, "New\\\nServers\\\n  Web\\\n    alpha\n    beta\n  db\nzeta\n"},
        {{{"new", "new\\one"}, ""}, "New\\\n  one\nServers\\\n  Web\\\n    alpha\n    beta\n  db\nDefault\nzeta\n"},
        {{{"rm", "DEFAULT", "new\\one", "new"}, ""}, kSeeded},
        {{{"cp", "servers\\web\\ALPHA", ""}, "alpha\n"},
         "Servers\\\n  Web\\\n    alpha\n    beta\n  db\nalpha\nzeta\n"},
        {{{"cp", "alpha", "\\"}, "alpha (1)\n"},
         "Servers\\\n  Web\\\n    alpha\n    beta\n  db\nalpha\nalpha (1)\nzeta\n"},
        {{{"rm", "alpha", "alpha (1)", "alpha"}, ""}, kSeeded},
        {{{"mv", "Servers\\Web", ""}, "Web\\\n"}, "Servers\\\n  db\nWeb\\\n  alpha\n  beta\nzeta\n"},
        {{{"mv", "Web", "Servers"}, "Servers\\Web\\\n"}, kSeeded},
        {{{"rename", "servers\\web", "WEB"}, ""}, "Servers\\\n  WEB\\\n    alpha\n    beta\n  db\nzeta\n"},
        {{{"rename", "zeta", "a b"}, ""}, "Servers\\\n  WEB\\\n    alpha\n    beta\n  db\na b\n"},
    };
    for (const auto& [run, tree] : rows) Transcript({run, {{"tree"}, tree}});
    EXPECT_EQ(RunWell({"get", "a b", "Hostname"}), "zeta.example.net\n");
    const ProcessResult arranged = Run({"arrange", "Servers\\Web\\beta", "--before", "ALPHA"});
    EXPECT_EQ(arranged.exitCode, 0);
    EXPECT_NE(arranged.errors.find("the order shows when sessions are arranged manually"), std::string::npos);
}

TEST_F(TreeCommandsTest, RefusalsAreTold) {
    Seed();
    RunWell({"mkdir", "Web"});
    RunWell({"mkdir", "Web\\default"});
    const std::pair<std::vector<std::string>, std::string> rows[] = {
        {{"cp", "Servers", "servers"}, "Cannot copy a folder into itself"},
        {{"mv", "Servers", "Servers\\Web"}, "Cannot copy or move a parent folder into a child"},
        {{"mv", "Web", "Servers"}, "Web already exists in the target folder"},
        {{"mv", "Web\\default", ""}, "ERROR: Could not add a new session to the tree."},
        {{"mv", "zeta", ""}, "\"zeta\" is in that folder already"},
        {{"new", "zeta\\x"}, "\"zeta\" is a session, a folder is needed"},
        {{"mkdir", "a:b"}, "The name \"a:b\" holds \":\", which separates the names of a list"},
        {{"rename", "zeta", "Web"}, "There is already an entry with the name \"Web\""},
        {{"rename", "", "x"}, "the root cannot be renamed"},
        {{"rm", "zeta", "\\"}, "the root cannot be deleted"},
        {{"rm", "zeta", "gone"}, "there is no session or folder \"gone\""},
        {{"arrange", "zeta", "--before", "Web"}, "there is no session \"Web\" beside \"zeta\""},
    };
    for (const auto& [arguments, text] : rows) ExpectRefusal(arguments, text);
    EXPECT_NE(RunBadly({"arrange", "zeta"}, 2).find("--before or --after"), std::string::npos);
}

TEST_F(TreeCommandsTest, WhatIsOpenIsNotDeleted) {
    Seed();
    setenv("XDG_RUNTIME_DIR", scratch.GetPath().c_str(), 1);
    {
        RunningSessionsHost host(kNorHaldenFrameClass);
        ASSERT_EQ(host.GetError(), 0U);
        VStringArray open;
        for (const char16_t* path : {u"ZETA", u"Servers\\Web\\beta", u"other"}) open.Add(path);
        host.SetPaths(open);
        ExpectRefusal({"rm", "servers\\db", "servers\\web\\BETA", "zeta"},
                      "以下会话正在使用中，不能删除： Servers\\Web\\beta ZETA");
        RunWell({"rm", "servers\\db"});
    }
    RunWell({"rm", "zeta"});
    unsetenv("XDG_RUNTIME_DIR");
}

TEST_F(TreeCommandsTest, AShortcutStartsTheHost) {
    Seed();
    const std::string host = scratch.Write("norhalden", "#!/bin/sh\n");
    environment = {"PATH=" + scratch.GetPath().string(), "HOME=" + scratch.GetPath().string(), "XDG_CONFIG_HOME="};
    EXPECT_NE(RunBadly({"shortcut", "zeta"}).find("norhalden is not installed"), std::string::npos);
    std::filesystem::permissions(host, std::filesystem::perms::owner_all);
    EXPECT_EQ(RunWell({"shortcut", "ZETA"}), "");
    const std::string exec = "Exec=\"" + host + "\" \"--store\" \"sqlite:" + StoreFile() + "\" \"/S\" \"zeta\"";
    EXPECT_NE(scratch.Read("Desktop/zeta.desktop").find(exec + "\nTerminal=true\n"), std::string::npos);
    EXPECT_EQ(RunWell({"shortcut", "", "servers\\db", "--label", "all"}), "");
    EXPECT_NE(scratch.Read("Desktop/all.desktop").find(R"("/S" "Servers\\\\db" "/SESSION_FOLDER" "\\\\")"),
              std::string::npos)
        << scratch.Read("Desktop/all.desktop");
    EXPECT_NE(RunBadly({"shortcut", "zeta", "--label", "a/b"}).find("creation of shortcut"), std::string::npos);
    EXPECT_NE(RunBadly({"shortcut", "zeta", "--label", "  "}).find("must be non-empty"), std::string::npos);
}

TEST_F(TreeCommandsTest, FindLooksWhereItIsTold) {
    Seed();
    RunWell({"set", "Servers\\db", "Description", "the web's\nDATA"});
    Transcript({
        {{"find", "WEB"}, "Servers\\Web\\\nServers\\db\n"},
        {{"find", "WEB", "--match-case"}, "connectctl: \"WEB\" 未找到。\n", 1},
        {{"find", "DATA", "--match-case", "--descriptions"}, "Servers\\db\n"},
        {{"find", "example", "--session-names", "--folder-names"}, "", 1},
        {{"find", "A.EXAMPLE", "--host-names"}, "Servers\\Web\\alpha\nServers\\Web\\beta\nzeta\n"},
        {{"find", "be", "--session-names"}, "Servers\\Web\\beta\n"},
    });
}

}  // namespace
}  // namespace connectdialog::test
