#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "foundation/messagetable.h"
#include "foundation/vcapirandomsource.h"
#include "foundation/vmodulefunctions.h"
#include "platform/knownfolders.h"
#include "platform/lasterror.h"
#include "platform/paths.h"
#include "platform/processlaunch.h"
#include "support/temporaryfolder.h"

namespace connectdialog::platform {
namespace {

/// A folder for each test, and the environment as it was before it.
class PlatformTest : public testing::Test {
  protected:
    ~PlatformTest() override {
        for (const auto& [name, value] : saved)
            value.empty() ? unsetenv(name.c_str()) : setenv(name.c_str(), value.c_str(), 1);
    }
    void SetVariable(const char* name, const std::string& value) {
        const char* before = std::getenv(name);
        saved.emplace_back(name, before != nullptr ? before : "");
        setenv(name, value.c_str(), 1);
    }
    std::string WriteProgram(const char* name, std::string_view text, mode_t mode) {
        std::string path = folder.Write(name, text);
        chmod(path.c_str(), mode);
        return path;
    }

    const test::TemporaryFolder folder;
    std::vector<std::pair<std::string, std::string>> saved;
};

TEST_F(PlatformTest, EveryErrnoBecomesANumberThatHasAText) {
    EXPECT_EQ(ErrorFromErrno(ENOENT), 2u);
    EXPECT_EQ(ErrorFromErrno(EACCES), 5u);
    EXPECT_EQ(ErrorFromErrno(ENOSPC), 112u);
    EXPECT_EQ(ErrorFromErrno(ENXIO), 31u);
    for (int error = 0; error < 200; ++error) EXPECT_NE(FindSystemMessage(ErrorFromErrno(error)), nullptr) << error;
}

TEST_F(PlatformTest, FoldersComeFromTheEnvironment) {
    const std::string home = folder.GetPath().string();
    const std::u16string wideHome = FromNativePath(home);
    SetVariable("HOME", home);
    SetVariable("XDG_DATA_HOME", "/data");
    SetVariable("XDG_STATE_HOME", "relative");
    SetVariable("XDG_CONFIG_HOME", home);
    SetVariable("XDG_RUNTIME_DIR", "/run/here/");
    folder.Write("user-dirs.dirs",
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
    unlink((home + "/user-dirs.dirs").c_str());
    ASSERT_EQ(mkfifo((home + "/user-dirs.dirs").c_str(), 0600), 0);
    EXPECT_EQ(GetKnownFolder(KnownFolder::kDesktop), wideHome + u"\\Desktop") << "a pipe is not waited for";
}

TEST_F(PlatformTest, RunsProgramsWithTheirArgumentsAsTheyAre) {
    int exitCode = -1;
    const std::string output = folder / "out";
    const std::string script = WriteProgram("script", "#!/bin/sh\nprintf '<%s>' \"$@\" > \"$OUTPUT\"\nexit 7\n", 0700);
    SetVariable("OUTPUT", output);
    SetVariable("PATH", "relative:" + folder.GetPath().string() + ":/usr/bin:/bin");
    ASSERT_TRUE(RunAndWait({"script", "a b", "$HOME", "", "*;'\"", "\xC3\xA4"}, exitCode));
    EXPECT_EQ(exitCode, 7);
    EXPECT_EQ(test::ReadFile(output), "<a b><$HOME><><*;'\"><\xC3\xA4>");
    ASSERT_TRUE(RunAndWait({"sh", "-c", "kill -9 $$"}, exitCode));
    EXPECT_EQ(exitCode, 137);
}

/// What a process that waits for a program does with signals, seen from outside.
TEST_F(PlatformTest, AProgramThatIsWaitedForHasTheTerminalsSignals) {
    const pid_t waiting = fork();
    if (waiting == 0) {
        int exitCode = -1;
        // The shell interrupts the process that waits, which leaves that to the shell; then it stops itself.
        const bool ran =
            RunAndWait({"/bin/sh", "-c",
                        "kill -INT $PPID; kill -TSTP $PPID; kill -STOP $$; trap 'exit 9' TERM; kill -TERM $PPID; "
                        "for i in $(seq 500); do sleep 0.01; done"},
                       exitCode);
        _exit(ran && WasAskedToEnd() ? exitCode : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(waiting, &status, WUNTRACED), waiting);
    EXPECT_TRUE(WIFSTOPPED(status)) << "it stops when the program does";
    kill(waiting, SIGCONT);
    ASSERT_EQ(waitpid(waiting, &status, 0), waiting);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 9) << "a request to end goes to the program: " << status;
}

TEST_F(PlatformTest, ProgramsThatWereStartedLeaveNoZombies) {
    for (int i = 0; i < 5; ++i) ASSERT_TRUE(StartProgram({"/bin/sh", "-c", "sleep 0.05"}, {}));
    // Each later start may find some that have ended; the last finds no child at all.
    siginfo_t child{};
    bool hasChild = true;
    for (int i = 0; i < 500 && hasChild; ++i) {
        usleep(20000);
        ASSERT_TRUE(StartProgram({"/bin/true"}, std::chrono::seconds(20)));
        hasChild = waitid(P_ALL, 0, &child, WEXITED | WNOHANG | WNOWAIT) == 0;
    }
    EXPECT_FALSE(hasChild);
}

TEST_F(PlatformTest, RefusesWhatIsNoProgram) {
    SetVariable("PATH", folder.GetPath().string());
    WriteProgram("plain", "echo never", 0600);
    WriteProgram("noshebang", "echo never > never", 0700);
    const std::pair<std::vector<std::string>, std::uint32_t> rows[] = {{{}, 87},
                                                                       {{""}, 2},
                                                                       {{"absent"}, 2},
                                                                       {{"plain"}, 5},
                                                                       {{"noshebang"}, 193},
                                                                       {{folder.GetPath().string()}, 5},
                                                                       {{"noshebang", std::string("a\0b", 3)}, 87}};
    for (const auto& [arguments, error] : rows) {
        int exitCode = -1;
        EXPECT_FALSE(RunAndWait(arguments, exitCode));
        EXPECT_EQ(GetLastErrorCode(), error);
        EXPECT_FALSE(ReplaceProcess(arguments));
        EXPECT_EQ(GetLastErrorCode(), error);
        EXPECT_EQ(exitCode, -1);
    }
}

TEST_F(PlatformTest, FunctionsOfModulesAreSetAndOptionalOnesMayBeMissing) {
    void* cosine = nullptr;
    void* missing = nullptr;
    const ModuleFunction functions[] = {{&cosine, "cos", false, false}, {&missing, "no_such_function", true, false}};
    EXPECT_EQ(LoadModuleFunctions(u"libm.so.6", functions).GetCode(), 0U);
    ASSERT_NE(cosine, nullptr);
    EXPECT_EQ(reinterpret_cast<double (*)(double)>(cosine)(0.0), 1.0);
    EXPECT_EQ(missing, nullptr);

    const ModuleFunction needed[] = {{&missing, "no_such_function", false, false}};
    VReportMessageParams report = LoadModuleFunctions(u"libm.so.6", needed);
    EXPECT_EQ(report.GetCode(), kReportSymbolNotFound);
    ASSERT_EQ(report.GetInsertCount(), 2U);
    EXPECT_EQ(std::u16string_view(report.GetInserts()[0]), u"libm.so.6");
    EXPECT_EQ(LoadModuleFunctions(u"no\\such\\module.so", needed).GetCode(), kReportModuleNotLoaded);
    EXPECT_EQ(GetLastErrorCode(), 126u);
    const ModuleFunction optional[] = {{&missing, "cos", true, false}};
    EXPECT_EQ(LoadModuleFunctions(u"no\\such\\module.so", optional).GetCode(), 0U);
}

TEST(RandomSource, FillsEveryByteOrLeavesTheBuffer) {
    VCapiRandomSource source;
    std::array<std::uint8_t, 4096> all{};
    // One fill leaves a given byte zero once in 256 times, sixteen of them do once in 2^128 times.
    for (int i = 0; i < 16; ++i) {
        std::array<std::uint8_t, 4096> block{};
        ASSERT_TRUE(source.Fill(block.data(), block.size()));
        for (std::size_t at = 0; at < all.size(); ++at) all[at] |= block[at];
    }
    EXPECT_EQ(std::ranges::count(all, 0), 0);

    VCapiRandomSource refused([](void*, std::size_t) { return FailWith(kAccessDenied); });
    EXPECT_EQ(refused.GetStatus(), kAccessDenied);
    const auto before = all;
    EXPECT_FALSE(refused.Fill(all.data(), all.size()));
    EXPECT_EQ(all, before);
}

}  // namespace
}  // namespace connectdialog::platform
