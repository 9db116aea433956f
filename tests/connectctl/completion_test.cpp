#include <string>

#include "tests/connectctl/toolfixture.h"

namespace connectdialog::test {

namespace {

const std::vector<std::vector<std::string>> kCommandWords = {{},
                                                             {"import"},
                                                             {"import", "openssh"},
                                                             {"tree"},
                                                             {"ls"},
                                                             {"show"},
                                                             {"get"},
                                                             {"set"},
                                                             {"connect"},
                                                             {"firewall"},
                                                             {"buttons"},
                                                             {"hive"},
                                                             {"hive", "set"},
                                                             {"secret"},
                                                             {"trace"},
                                                             {"new"},
                                                             {"mkdir"},
                                                             {"cp"},
                                                             {"mv"},
                                                             {"rename"},
                                                             {"rm"},
                                                             {"arrange"},
                                                             {"find"},
                                                             {"shortcut"},
                                                             {"export"},
                                                             {"import", "json"},
                                                             {"keymap"},
                                                             {"keymap", "show"},
                                                             {"completion"}};

TEST_F(ToolTest, EveryCommandHasHelp) {
    for (const std::vector<std::string>& words : kCommandWords) {
        std::vector<std::string> arguments = words;
        arguments.emplace_back("--help");
        const std::string help = RunWell(arguments);
        EXPECT_NE(help.find("Usage: connectctl"), std::string::npos) << help;
        for (const std::string& word : words) EXPECT_NE(help.find(word), std::string::npos) << help;
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

TEST_F(ToolTest, BashCompletesCommandsOptionsAndPaths) {
    Seed();
    WithStore([] { AddSession(VUnicodeString(), u"$(touch x) y"_v, u"a.example.net"_v); });
    const std::string store = "BRENNMARK_STORE=sqlite:" + StoreFile();
    const struct {
        std::vector<std::string> words;
        std::string offered;
    } rows[] = {
        {{"co"}, "connect\ncompletion\n"},
        {{"--st"}, "--store\n"},
        {{"import", "o"}, "openssh\n"},
        {{"import", "openssh", "--d"}, "--dry-run\n"},
        {{"connect", "--d"}, "--dry-run\n"},
        {{"--store", "show", "tre"}, "tree\n"},
        {{"completion", ""}, "bash\nzsh\nfish\n--help\n"},
        {{"show", "z"}, "zeta\n"},
        {{"cp", "zeta", "Servers\\\\W"}, "Servers\\\\Web\\\\\nServers\\\\Web\\\\alpha\nServers\\\\Web\\\\beta\n"},
        {{"arrange", "zeta", "--b"}, "--before\n"},
        {{"show", "$"}, "\\$\\(touch\\ x\\)\\ y\n"},
        {{"show", "Servers\\\\W"}, "Servers\\\\Web\\\\\nServers\\\\Web\\\\alpha\nServers\\\\Web\\\\beta\n"},
    };
    for (const auto& row : rows) EXPECT_EQ(Complete(row.words, store), row.offered) << row.words.back();
}

TEST_F(ToolTest, EveryShellHasItsScript) {
    for (const char* shell : {"bash", "zsh", "fish"}) {
        const std::string script = RunWell({"completion", shell});
        for (const char* word : {"import", "openssh", "dry-run", "completion", "recursive"})
            EXPECT_NE(script.find(word), std::string::npos) << shell << ": " << word;
    }
}

}  // namespace

}  // namespace connectdialog::test
