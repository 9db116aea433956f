#include "config/isessionconfig.h"
#include "imports/configpanels.h"
#include "profile/vprofilemultilinestring.h"
#include "sessiondb/runningsessions.h"
#include "sessiondb/sessiontree.h"
#include "tests/connectctl/toolfixture.h"

namespace connectdialog::test {
namespace {

constexpr char kSeeded[] = "Servers\\\n  Web\\\n    alpha\n    beta\n  db\nzeta\n";

class TreeCommandsTest : public ToolTest {
  protected:
    void ArrangeManually() const {
        WithStore([] {
            VRef<GlobalConfig> global;
            ASSERT_TRUE(GetGlobalConfig(global, -1));
            global->sessionArrangementMode.Set(static_cast<int>(SessionArrangement::kManual));
            ASSERT_TRUE(global->Save());
        });
    }
    /// The one line that a refused run tells; the tree stays as it is.
    void ExpectRefusal(const std::vector<std::string>& arguments, const std::string& text) const {
        const std::string before = RunWell({"tree"});
        EXPECT_EQ(RunBadly(arguments), "connectctl: " + text + "\n") << ::testing::PrintToString(arguments);
        EXPECT_EQ(RunWell({"tree"}), before);
    }
};

TEST_F(TreeCommandsTest, MakeAndCopyAndMoveAndDelete) {
    Seed();
    const struct {
        std::vector<std::string> arguments;
        std::string output;
        std::string tree;
    } rows[] = {
        {{"mkdir", "New\\"}, "", "New\\\nServers\\\n  Web\\\n    alpha\n    beta\n  db\nzeta\n"},
        {{"new", "new\\one"}, "", "New\\\n  one\nServers\\\n  Web\\\n    alpha\n    beta\n  db\nDefault\nzeta\n"},
        {{"rm", "DEFAULT", "new\\one", "new"}, "", kSeeded},
        {{"cp", "servers\\web\\ALPHA", ""}, "alpha\n", "Servers\\\n  Web\\\n    alpha\n    beta\n  db\nalpha\nzeta\n"},
        {{"cp", "alpha", "\\"},
         "alpha (1)\n",
         "Servers\\\n  Web\\\n    alpha\n    beta\n  db\nalpha\nalpha (1)\nzeta\n"},
        {{"rm", "alpha", "alpha (1)", "alpha"}, "", kSeeded},
        {{"mv", "Servers\\Web", ""}, "Web\\\n", "Servers\\\n  db\nWeb\\\n  alpha\n  beta\nzeta\n"},
        {{"cp", "web", ""},
         "Web (1)\\\n",
         "Servers\\\n  db\nWeb\\\n  alpha\n  beta\nWeb (1)\\\n  alpha\n  beta\nzeta\n"},
        {{"mv", "Web", "Servers"},
         "Servers\\Web\\\n",
         "Servers\\\n  Web\\\n    alpha\n    beta\n  db\nWeb (1)\\\n  alpha\n  beta\nzeta\n"},
        {{"rm", "Web (1)"}, "", kSeeded},
        {{"rename", "servers\\web", "WEB"}, "", "Servers\\\n  WEB\\\n    alpha\n    beta\n  db\nzeta\n"},
        {{"rename", "zeta", "a b"}, "", "Servers\\\n  WEB\\\n    alpha\n    beta\n  db\na b\n"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(RunWell(row.arguments), row.output) << ::testing::PrintToString(row.arguments);
        EXPECT_EQ(RunWell({"tree"}), row.tree) << ::testing::PrintToString(row.arguments);
    }
    EXPECT_EQ(RunWell({"get", "a b", "Hostname"}), "zeta.example.net\n");
}

TEST_F(TreeCommandsTest, RefusalsAreTold) {
    Seed();
    RunWell({"mkdir", "Web"});
    RunWell({"mkdir", "Web\\default"});
    const struct {
        std::vector<std::string> arguments;
        std::string text;
    } rows[] = {
        {{"cp", "Servers", "servers"}, "Cannot copy a folder into itself"},
        {{"mv", "Servers", "Servers\\Web"}, "Cannot copy or move a parent folder into a child"},
        {{"cp", "", "Servers"}, "Cannot copy or move a parent folder into a child"},
        {{"mv", "Web", "Servers"}, "Web already exists in the target folder"},
        {{"mv", "Web\\default", ""}, "ERROR: Could not add a new session to the tree."},
        {{"cp", "zeta", "Servers\\db"}, "\"Servers\\db\" is a session, a folder is needed"},
        {{"mv", "zeta", ""}, "\"zeta\" is in that folder already"},
        {{"new", "web"}, "There is already an entry with the name \"web\""},
        {{"new", "zeta\\x"}, "\"zeta\" is a session, a folder is needed"},
        {{"mkdir", "gone\\x"}, "there is no session or folder \"gone\""},
        {{"mkdir", "a:b"}, "The name \"a:b\" holds \":\", which separates the names of a list"},
        {{"rename", "zeta", "Web"}, "There is already an entry with the name \"Web\""},
        {{"rename", "", "x"}, "the root cannot be renamed"},
        {{"rm", "zeta", "\\"}, "the root cannot be deleted"},
        {{"rm", "zeta", "gone"}, "there is no session or folder \"gone\""},
        {{"arrange", "zeta", "--before", "Web"}, "there is no session \"Web\" beside \"zeta\""},
    };
    for (const auto& row : rows) ExpectRefusal(row.arguments, row.text);
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
    EXPECT_NE(scratch.Read("Desktop/zeta.desktop").find("Exec=\"" + host + "\" \"/S\" \"zeta\"\nTerminal=true\n"),
              std::string::npos);
    EXPECT_EQ(RunWell({"shortcut", "", "servers\\db", "--label", "all"}), "");
    EXPECT_NE(scratch.Read("Desktop/all.desktop").find(R"("/S" "Servers\\\\db" "/SESSION_FOLDER" "\\\\")"),
              std::string::npos)
        << scratch.Read("Desktop/all.desktop");
    EXPECT_NE(RunBadly({"shortcut", "zeta", "--label", "a/b"}).find("creation of shortcut"), std::string::npos);
}

TEST_F(TreeCommandsTest, TheUsersOrderIsKept) {
    ArrangeManually();
    for (const char* name : {"c", "a", "b"}) RunWell({"new", name});
    RunWell({"rm", "Default"});
    const struct {
        std::vector<std::string> arguments;
        std::string tree;
    } rows[] = {
        {{"arrange", "A", "--before", "C"}, "a\nc\nb\n"},
        {{"arrange", "a", "--after", "c"}, "c\na\nb\n"},
        {{"rename", "a", "A"}, "c\nA\nb\n"},
        {{"rename", "c", "z"}, "z\nA\nb\n"},
        {{"rename", "b", "y"}, "z\nA\ny\n"},
    };
    for (const auto& row : rows) {
        RunWell(row.arguments);
        EXPECT_EQ(RunWell({"tree"}), row.tree) << ::testing::PrintToString(row.arguments);
    }
}

TEST_F(TreeCommandsTest, FindLooksWhereItIsTold) {
    Seed();
    WithStore([] {
        const auto session = OpenSession(u"Servers\\db");
        auto* description = dynamic_cast<VProfileMultiLineString*>(session->FindValue(u"Description"));
        ASSERT_NE(description, nullptr);
        description->SetText(u"the web's\nDATA");
        ASSERT_TRUE(SaveSession(*session));
    });
    const struct {
        std::vector<std::string> arguments;
        std::string output;
    } rows[] = {
        {{"WEB"}, "Servers\\Web\\\nServers\\db\n"},
        {{"WEB", "--match-case"}, ""},
        {{"data", "--descriptions"}, "Servers\\db\n"},
        {{"DATA", "--match-case"}, "Servers\\db\n"},
        {{"example", "--session-names", "--folder-names"}, ""},
        {{"A.EXAMPLE", "--host-names"}, "Servers\\Web\\alpha\nServers\\Web\\beta\nzeta\n"},
        {{"sess"}, "\\\n"},
        {{"be", "--session-names"}, "Servers\\Web\\beta\n"},
    };
    for (const auto& row : rows) {
        std::vector<std::string> arguments = {"find"};
        arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
        if (row.output.empty())
            EXPECT_EQ(RunBadly(arguments), "connectctl: \"" + row.arguments[0] + "\" 未找到。\n");
        else
            EXPECT_EQ(RunWell(arguments), row.output) << ::testing::PrintToString(arguments);
    }
}

}  // namespace
}  // namespace connectdialog::test
