// Help, completion, wrong usage, stores and paths that cannot be used.
#include <fstream>
#include <sstream>
#include <sys/stat.h>

#include "profile/vprofilekey.h"
#include "tests/connectctl/toolfixture.h"

namespace connectdialog::test {
namespace {

TEST_F(ToolTest, EveryCommandHasHelp) {
    for (const char* command : {"",        "import openssh", "import json", "export",     "tree",      "ls",
                                "show",    "default",        "diff",        "get",        "set",       "connect",
                                "new",     "mkdir",          "cp",          "mv",         "rename",    "rm",
                                "arrange", "find",           "shortcut",    "firewall",   "buttons",   "hive set",
                                "secret",  "trace",          "keymap show", "menu check", "completion"}) {
        std::istringstream words(std::string(command) + " --help");
        const std::string help = RunWell({std::istream_iterator<std::string>(words), {}});
        EXPECT_NE(help.find("Usage: connectctl"), std::string::npos) << help;
        EXPECT_NE(help.find(command), std::string::npos) << help;
    }
    EXPECT_TRUE(RunWell({"--version"}).starts_with("connectctl "));
}

/// What bash offers behind the words typed so far; the last one is being typed.
std::string Complete(const std::vector<std::string>& words, const std::string& environment) {
    std::string typed;
    for (const std::string& word : words) typed += " '" + word + '\'';
    const std::string program = CONNECTCTL_PROGRAM;
    const std::string script = "PATH=" + program.substr(0, program.rfind('/')) +
                               ":$PATH; eval \"$(connectctl completion bash)\"; COMP_WORDS=(connectctl" + typed +
                               "); COMP_CWORD=" + std::to_string(words.size()) +
                               "; _connectctl; for word in \"${COMPREPLY[@]}\"; do echo \"$word\"; done";
    const ProcessResult result = RunProcess({"/bin/bash", "-c", script}, {environment});
    EXPECT_EQ(result.errors, "");
    return result.output;
}

TEST_F(ToolTest, ShellsCompleteCommandsOptionsAndPaths) {
    Seed();
    WithStore([] { AddSession(VUnicodeString(), u"$(touch x) y"_v, u"a.example.net"_v); });
    const ToolRun rows[] = {
        {{"co"}, "connect\ncompletion\n"},
        {{"import", "openssh", "--d"}, "--dry-run\n"},
        {{"--store", "show", "tre"}, "tree\n"},
        {{"completion", ""}, "bash\nzsh\nfish\n--help\n"},
        {{"diff", "zeta", "z"}, "zeta\n"},
        {{"show", "$"}, "\\$\\(touch\\ x\\)\\ y\n"},
        {{"show", "Servers\\\\W"}, "Servers\\\\Web\\\\\nServers\\\\Web\\\\alpha\nServers\\\\Web\\\\beta\n"},
    };
    for (const ToolRun& row : rows)
        EXPECT_EQ(Complete(row.arguments, "BRENNMARK_STORE=sqlite:" + StoreFile()), row.text) << row.arguments.back();
    for (const char* shell : {"zsh", "fish"}) {
        const std::string script = RunWell({"completion", shell});
        for (const char* word : {"openssh", "dry-run", "completion"})
            EXPECT_NE(script.find(word), std::string::npos) << shell << ": " << word;
    }
}

TEST_F(ToolTest, WrongUsageAndPathsThatLeadNowhereAreExplained) {
    Seed();
    Transcript({
        {{}, "", 2},
        {{"frob"}, "", 2},
        {{"ls", "--frob"}, "", 2},
        {{"ls", "a", "b"}, "", 2},
        {{"set", "x", "y"}, "", 2},
        {{"import"}, "", 2},
        {{"completion", "csh"}, "", 2},
        {{"connect", "x", "--json"}, "", 2},
        {{"show", "Servers\\Web\\"}, "\"Servers\\Web\" is a folder, a session is needed", 1},
        {{"show", ""}, "the path is empty, a session is needed", 1},
        {{"show", "nobody"}, "there is no session or folder \"nobody\"", 1},
        {{"show", "Servers/Web/alpha"}, "names are joined by \\: did you mean \"Servers\\Web\\alpha\"?", 1},
        {{"show", "Servers/nobody"}, "names are joined by \\\n", 1},
        {{"ls", "Servers\\\\Web"}, "has an empty name", 1},
        {{"ls", "Servers\\__folderdata__"}, "there is no session or folder", 1},
        {{"ls", "zeta\\below"}, "there is no session or folder", 1},
        {{"ls", std::string(100000, 'x')}, "xxx…\"", 1},
        {{"ls", "\x1b[2J"}, "\"<U+001B>[2J\"", 1},
        {{"ls", "\xc3\x28"}, "is not well-formed UTF-8", 1},
    });
}

TEST_F(ToolTest, StoresThatCannotBeUsedAreExplained) {
    const std::string folder = scratch / "folder";
    ASSERT_EQ(mkdir(folder.c_str(), 0700), 0);
    const std::string text = scratch.Write("text", "no database at all, but long enough to be looked at\n");
    Seed();
    WithStore([&] {
        VProfileStore store(false);
        ASSERT_TRUE(store.JoinUnitOfWork());
        RunBadly({"set", "zeta", "Title Bar", "x"});
        ASSERT_TRUE(store.Close());
    });
    EXPECT_EQ(RunWell({"get", "zeta", "Title Bar"}), "\n") << "a locked store keeps its value";
    constexpr std::streamoff kUserVersion = 60;  // in the header of the file format
    std::fstream stream(StoreFile(), std::ios::in | std::ios::out | std::ios::binary);
    stream.seekp(kUserVersion);
    stream << "\x7f";
    stream.close();
    for (const std::string& url : {"sqlite:" + folder, "sqlite:" + text, "sqlite:" + StoreFile(), std::string("ftp:x"),
                                   std::string("sqlite:"), std::string("\xff")})
        for (const char* command : {"ls", "show"}) RunBadly({"--store", url, command, "zeta"});
}

TEST_F(ToolTest, OutputThatIsLostIsAFailure) {
    Seed();
    const std::string command = std::string(CONNECTCTL_PROGRAM) + " --store sqlite:" + StoreFile() + " ";
    EXPECT_EQ(RunProcess({"/bin/sh", "-c", command + "ls >/dev/full; echo $?"}).output, "1\n");
    const ProcessResult diff = RunProcess({"/bin/sh", "-c", command + "diff zeta 'Servers\\db' >/dev/full; echo $?"});
    EXPECT_EQ(diff.output, "2\n");
    EXPECT_NE(diff.errors, "");
}

}  // namespace
}  // namespace connectdialog::test
