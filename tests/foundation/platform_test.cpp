#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include "foundation/messagetable.h"
#include "platform/clock.h"
#include "platform/environment.h"
#include "platform/knownfolders.h"
#include "platform/lasterror.h"
#include "platform/modules.h"
#include "platform/paths.h"
#include "platform/processlaunch.h"
#include "platform/registeredmessage.h"
#include "platform/userfiles.h"

namespace connectdialog::platform {
namespace {

/// A folder of its own for a test, and the environment as it was before it.
class PlatformTest : public testing::Test {
  protected:
    PlatformTest() {
        std::string pattern = (std::filesystem::temp_directory_path() / "platform_test_XXXXXX").string();
        folder = mkdtemp(pattern.data());
    }
    ~PlatformTest() override {
        std::filesystem::remove_all(folder);
        for (const auto& [name, value] : saved)
            value.empty() ? unsetenv(name.c_str()) : setenv(name.c_str(), value.c_str(), 1);
    }
    void SetVariable(const char* name, const std::string& value) {
        const char* before = std::getenv(name);
        saved.emplace_back(name, before != nullptr ? before : "");
        setenv(name, value.c_str(), 1);
    }
    std::string WriteFile(const char* name, std::string_view text, mode_t mode = 0600) {
        const std::string path = folder / name;
        std::ofstream(path) << text;
        chmod(path.c_str(), mode);
        return path;
    }

    std::filesystem::path folder;
    std::vector<std::pair<std::string, std::string>> saved;
};

TEST_F(PlatformTest, EveryErrnoBecomesANumberThatHasAText) {
    EXPECT_EQ(ErrorFromErrno(ENOENT), 2u);
    EXPECT_EQ(ErrorFromErrno(EACCES), 5u);
    EXPECT_EQ(ErrorFromErrno(ENOSPC), 112u);
    EXPECT_EQ(ErrorFromErrno(ENXIO), 31u);
    for (int error = 0; error < 200; ++error) EXPECT_NE(FindSystemMessage(ErrorFromErrno(error)), nullptr) << error;
    for (const std::uint32_t documented :
         {2u, 5u, 32u, 38u, 50u, 87u, 112u, 122u, 183u, 234u, 317u, 1018u, 1113u, 1410u, 1629u}) {
        EXPECT_NE(FindSystemMessage(documented), nullptr) << documented;
    }
}

TEST_F(PlatformTest, ReadsTheEnvironment) {
    SetVariable("CONNECTDIALOG_TEST", "a\xC3\xA4/b");
    std::u16string value;
    EXPECT_TRUE(GetEnvironmentText(u"CONNECTDIALOG_TEST", value));
    EXPECT_EQ(value, u"a\u00E4/b");
    for (const std::u16string_view name : {u"CONNECTDIALOG_ABSENT", u"", u"CONNECTDIALOG_TEST=a"}) {
        EXPECT_FALSE(GetEnvironmentText(name, value));
        EXPECT_EQ(GetLastErrorCode(), 203u);
    }
    EXPECT_EQ(value, u"a\u00E4/b");
}

TEST_F(PlatformTest, PathsChangeTheirSeparator) {
    EXPECT_EQ(ToNativePath(u"\\a\\b/\u00E4"), "/a/b/\xC3\xA4");
    EXPECT_EQ(FromNativePath("/a/b"), u"\\a\\b");
    EXPECT_EQ(ToNativePath(std::u16string_view(u"a\0b", 3)), "");
}

TEST_F(PlatformTest, FoldersComeFromTheEnvironment) {
    const std::string home = folder.string();
    const std::u16string wideHome = FromNativePath(home);
    SetVariable("HOME", home);
    SetVariable("XDG_DATA_HOME", "/data");
    SetVariable("XDG_STATE_HOME", "relative");
    SetVariable("XDG_CONFIG_HOME", home);
    SetVariable("XDG_RUNTIME_DIR", "/run/here/");
    WriteFile("user-dirs.dirs",
              "# comment\n\tXDG_DESKTOP_DIR=\"$HOME/My \\\"Desk\\\"\"\nXDG_DOCUMENTS_DIR=\"/shared/docs/\"\n"
              "XDG_DOWNLOAD_DIR=\"relative\"\nXDG_DOWNLOAD_DIR_X=\"/no\"\n");
    EXPECT_EQ(GetKnownFolder(KnownFolder::kHome), wideHome);
    EXPECT_EQ(GetKnownFolder(KnownFolder::kData), u"\\data\\brennmark");
    EXPECT_EQ(GetKnownFolder(KnownFolder::kState), wideHome + u"\\.local\\state\\brennmark");
    EXPECT_EQ(GetKnownFolder(KnownFolder::kConfiguration), wideHome + u"\\brennmark");
    EXPECT_EQ(GetKnownFolder(KnownFolder::kRuntime), u"\\run\\here\\brennmark");
    EXPECT_EQ(GetKnownFolder(KnownFolder::kMachineConfiguration), u"\\etc\\xdg\\brennmark");
    EXPECT_EQ(GetKnownFolder(KnownFolder::kDesktop), wideHome + u"\\My \"Desk\"");
    EXPECT_EQ(GetKnownFolder(KnownFolder::kDocuments), u"\\shared\\docs");
    EXPECT_EQ(GetKnownFolder(KnownFolder::kDownloads), wideHome + u"\\Downloads");
}

TEST_F(PlatformTest, UserFoldersArePrivate) {
    const std::u16string base = FromNativePath(folder.string());
    const mode_t before = umask(0);
    EXPECT_TRUE(CreateUserFolder(base + u"\\a\\b"));
    umask(before);
    EXPECT_TRUE(CreateUserFolder(base + u"\\a\\b"));
    EXPECT_TRUE(IsPrivateFolder(base + u"\\a"));
    EXPECT_TRUE(IsPrivateFolder(base + u"\\a\\b"));
    chmod((folder / "a").c_str(), 0755);
    EXPECT_FALSE(IsPrivateFolder(base + u"\\a"));
    EXPECT_EQ(GetLastErrorCode(), 5u);
    std::filesystem::create_symlink(folder / "a" / "b", folder / "link");
    EXPECT_FALSE(IsPrivateFolder(base + u"\\link"));
    WriteFile("file", "");
    EXPECT_FALSE(CreateUserFolder(base + u"\\file\\below"));
    EXPECT_EQ(GetLastErrorCode(), 267u);
    EXPECT_FALSE(CreateUserFolder(u""));
}

TEST_F(PlatformTest, RunsProgramsWithTheirArgumentsAsTheyAre) {
    int exitCode = -1;
    const std::string output = folder / "out";
    const std::string script = WriteFile("script", "#!/bin/sh\nprintf '<%s>' \"$@\" > \"$OUTPUT\"\nexit 7\n", 0700);
    SetVariable("OUTPUT", output);
    SetVariable("PATH", "relative:" + folder.string() + ":/usr/bin:/bin");
    ASSERT_TRUE(RunAndWait({"script", "a b", "$HOME", "", "*;'\"", "\xC3\xA4"}, exitCode));
    EXPECT_EQ(exitCode, 7);
    std::ifstream file(output);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), "<a b><$HOME><><*;'\"><\xC3\xA4>");
    ASSERT_TRUE(RunAndWait({"sh", "-c", "kill -9 $$"}, exitCode));
    EXPECT_EQ(exitCode, 137);
}

TEST_F(PlatformTest, RefusesWhatIsNoProgram) {
    SetVariable("PATH", folder.string());
    WriteFile("plain", "echo never", 0600);
    WriteFile("noshebang", "echo never > never", 0700);
    struct Row {
        std::vector<std::string> arguments;
        std::uint32_t error;
    };
    const Row rows[] = {{{}, 87},
                        {{""}, 2},
                        {{"absent"}, 2},
                        {{"plain"}, 5},
                        {{"noshebang"}, 193},
                        {{folder.string()}, 5},
                        {{"noshebang", std::string("a\0b", 3)}, 87}};
    for (const Row& row : rows) {
        int exitCode = -1;
        EXPECT_FALSE(RunAndWait(row.arguments, exitCode));
        EXPECT_EQ(GetLastErrorCode(), row.error);
        EXPECT_FALSE(ReplaceProcess(row.arguments));
        EXPECT_EQ(GetLastErrorCode(), row.error);
        EXPECT_EQ(exitCode, -1);
    }
}

TEST_F(PlatformTest, ReplacingTheProcessRunsTheProgramInItsPlace) {
    EXPECT_EXIT(ReplaceProcess({"sh", "-c", "exit 9"}), testing::ExitedWithCode(9), "");
}

TEST_F(PlatformTest, ModuleHandlesAreCheckedBeforeUse) {
    const ModuleHandle library = GetLibraryModule();
    ASSERT_NE(library, nullptr);
    EXPECT_EQ(GetModuleFile(library), GetExecutablePath());
    const ModuleHandle math = LoadModule(u"libm.so.6");
    ASSERT_NE(math, nullptr);
    EXPECT_NE(FindSymbol(math, "cos"), nullptr);
    EXPECT_EQ(FindSymbol(math, "no_such_function"), nullptr);
    EXPECT_EQ(GetLastErrorCode(), 127u);
    EXPECT_NE(GetModuleFile(math).find(u"\\libm.so.6"), std::u16string::npos);
    FreeModule(math);
    FreeModule(library);
    int noModule = 0;
    EXPECT_EQ(GetModuleFile(math), u"");
    EXPECT_EQ(FindSymbol(&noModule, "cos"), nullptr);
    EXPECT_EQ(GetLastErrorCode(), 6u);
    FreeModule(&noModule);
    EXPECT_EQ(LoadModule(u"\\no\\such\\module.so"), nullptr);
    EXPECT_EQ(GetLastErrorCode(), 126u);
    EXPECT_EQ(LoadModule(FromNativePath(WriteFile("no.so", "text"))), nullptr);
    EXPECT_EQ(GetLastErrorCode(), 193u);
    EXPECT_EQ(LoadModule(u""), nullptr);
}

TEST_F(PlatformTest, RegisteredMessagesComeFromTheNameAlone) {
    // The FNV-1a hash of the bytes 61 00 is 0x2B24D044.
    EXPECT_EQ(GetRegisteredMessage(u"a"), 0xFCD7u);
    EXPECT_EQ(GetRegisteredMessage(u"A"), 0xFCD7u);
    EXPECT_NE(GetRegisteredMessage(u"Some message"), GetRegisteredMessage(u"Some messagf"));
    for (int i = 0; i < 1000; ++i) {
        const std::uint32_t number = GetRegisteredMessage(FromNativePath(std::to_string(i)));
        EXPECT_TRUE(number >= 0xC000 && number <= 0xFFFF);
    }
    EXPECT_EQ(GetRegisteredMessage(u""), 0u);
}

TEST_F(PlatformTest, TheClockCanBeTurned) {
    const std::uint64_t now = GetFileTimeNow();
    EXPECT_NEAR(static_cast<double>(now - kUnixEpoch) / kFileTimePerSecond, static_cast<double>(std::time(nullptr)),
                2.0);
    SetClock([]() -> std::uint64_t { return 123; });
    EXPECT_EQ(GetFileTimeNow(), 123u);
    SetClock(nullptr);
    EXPECT_GE(GetFileTimeNow(), now);
}

}  // namespace
}  // namespace connectdialog::platform
