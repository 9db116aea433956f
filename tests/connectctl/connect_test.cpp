#include <nlohmann/json.hpp>
#include <sys/stat.h>

#include "tests/connectctl/toolfixture.h"

namespace connectdialog::test {
namespace {

using Json = nlohmann::json;

TEST_F(ToolTest, DryRunPrintsTheArgumentVector) {
    Seed();
    RunWell({"set", "zeta", "Username", "root"});
    const std::string line = RunWell({"connect", "zeta", "--dry-run"});
    EXPECT_EQ(std::ranges::count(line, '\n'), 1);
    const Json arguments = Json::parse(line);
    ASSERT_GE(arguments.size(), 4U);
    EXPECT_EQ(arguments.front(), "ssh");
    EXPECT_NE(std::ranges::find(arguments, "root"), arguments.end());
    EXPECT_EQ(arguments[arguments.size() - 2], "--");
    EXPECT_EQ(arguments.back(), "zeta.example.net");
    const Json described = Json::parse(RunWell({"connect", "zeta", "--dry-run", "--json"}));
    EXPECT_EQ(described["argv"], arguments);
    EXPECT_EQ(described["package"], "openssh-client");
}

TEST_F(ToolTest, WhatCannotBeConnectedReachesNoClient) {
    Seed();
    RunWell({"set", "zeta", "Hostname", "--", "-oProxyCommand=touch x"});
    for (const char* path : {"zeta", "Servers", "nobody"}) {
        RunBadly({"connect", path, "--dry-run"});
        RunBadly({"connect", path});
    }
}

TEST_F(ToolTest, ConnectBecomesTheClient) {
    Seed();
    const std::string client = scratch.Write("ssh", "#!/bin/sh\nprintf '%s|' \"$0\" \"$@\"\nexit 7\n");
    ASSERT_EQ(chmod(client.c_str(), 0700), 0);
    environment = {"PATH=" + scratch.GetPath().string()};
    const ProcessResult result = Run({"connect", "zeta"});
    EXPECT_EQ(result.exitCode, 7);
    EXPECT_EQ(result.errors, "");
    EXPECT_TRUE(result.output.starts_with(client + "|")) << result.output;
    EXPECT_TRUE(result.output.ends_with("|--|zeta.example.net|")) << result.output;

    environment = {"PATH=/nonexistent"};
    EXPECT_EQ(RunBadly({"connect", "zeta"}),
              "connectctl: The program \"ssh\" is not installed; the Debian package openssh-client has it\n");
}

}  // namespace
}  // namespace connectdialog::test
