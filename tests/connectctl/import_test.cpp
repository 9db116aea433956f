#include <filesystem>
#include <nlohmann/json.hpp>

#include "tests/connectctl/toolfixture.h"

namespace connectdialog::test {
namespace {

using Json = nlohmann::json;

constexpr char kConfig[] =
    "Host web\n  HostName web.example.net\n  Port 2222\n  ProxyJump gate\n"
    "Host gate\n  User jump\n"
    "Host -oBad\n"
    "Host *\n  User root\n";

TEST_F(ToolTest, ImportsHostsOnce) {
    const std::string file = scratch.Write("config", kConfig);
    const std::string summary = Run({"import", "openssh", file, "--into", "Imported"}).output;
    EXPECT_TRUE(summary.starts_with("2 made, 0 updated, 0 left alone, 1 skipped\nskipped -oBad: ")) << summary;
    EXPECT_EQ(RunWell({"get", "Imported\\web", "Username"}), "root\n");
    const Json arguments = Json::parse(RunWell({"connect", "Imported\\web", "--dry-run"}));
    EXPECT_NE(std::ranges::find(arguments, "2222"), arguments.end()) << arguments;
    EXPECT_EQ(arguments.back(), "web.example.net");

    const std::string before = RunProcess({"/usr/bin/sha256sum", StoreFile()}).output;
    const std::string again = Run({"import", "openssh", file, "--into", "Imported\\"}).output;
    EXPECT_TRUE(again.starts_with("0 made, 0 updated, 2 left alone, 1 skipped\n")) << again;
    EXPECT_EQ(RunProcess({"/usr/bin/sha256sum", StoreFile()}).output, before);
}

TEST_F(ToolTest, ADryRunOfAnImportTellsTheSameAndWritesNothing) {
    const std::string file = scratch.Write("config", kConfig);
    const ProcessResult result = Run({"import", "openssh", file, "--dry-run"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(result.output.starts_with("dry run, 2 made, 0 updated, 0 left alone, 1 skipped\n")) << result.output;
    EXPECT_FALSE(std::filesystem::exists(StoreFile()));
    const Json json = Json::parse(Run({"import", "openssh", file, "--dry-run", "--json"}).output);
    EXPECT_EQ(json["made"], 2);
    EXPECT_EQ(json["hosts"].size(), 3U);
    EXPECT_EQ(json["hosts"][0]["path"], "web");
}

TEST_F(ToolTest, FindingsNameTheirLine) {
    const std::string file = scratch.Write("config", "Host a\n  Match exec \"touch x\"\n  Frobnicate yes\n");
    const ProcessResult result = Run({"import", "openssh", file});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_NE(result.errors.find(file + ":2: "), std::string::npos) << result.errors;
    EXPECT_NE(result.errors.find(file + ":3: "), std::string::npos) << result.errors;
}

TEST_F(ToolTest, ImportsThatCannotBeAreExplained) {
    Seed();
    const std::string file = scratch.Write("config", kConfig);
    const std::string before = RunWell({"ls", "-R"});
    RunBadly({"import", "openssh", scratch / "absent"});
    RunBadly({"import", "openssh", file, "--into", "zeta"});
    RunBadly({"import", "openssh", file, "--into", "a\\\\b"});
    RunBadly({"import", "openssh", file, "--into", "a:b"});
    EXPECT_EQ(RunWell({"ls", "-R"}), before);
}

}  // namespace
}  // namespace connectdialog::test
