#include "foundation/vtrace.h"

#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <vector>

#include "foundation/vtextfile.h"
#include "platform/clock.h"
#include "platform/lasterror.h"
#include "support/childprocess.h"
#include "support/temporaryfolder.h"

namespace connectdialog {
namespace {

namespace fs = std::filesystem;

/// The trace is one file for a whole process, so that each case needs a process of its own.
class TraceTest : public testing::Test {
  protected:
    /// Traces two lines in another process, after `prepare` was called there. 0 when the caller saw nothing of it.
    template <class Prepare>
    static int TraceAfter(Prepare prepare) {
        test::ChildProcess child([&](test::ChildProcess&) {
            setenv("TZ", "UTC", 1);
            platform::SetClock([] { return platform::kUnixEpoch + 5 * platform::kFileTimePerSecond + 70'000; });
            prepare();
            platform::SetLastErrorCode(7);
            VTrace(u"%1 has %2!d! sessions", u"ä", 3);
            VTrace(u"%1!s! %2!s!", u"an insert is missing");
            return platform::GetLastErrorCode() == 7 ? 0 : 1;
        });
        return child.Wait();
    }

    static std::vector<std::u16string> ReadLines(const VUnicodeString& name) {
        VTextFile file;
        VUnicodeString line;
        std::vector<std::u16string> lines;
        EXPECT_TRUE(file.Open(name, platform::kGenericRead, platform::kOpenExisting));
        EXPECT_EQ(file.GetEncoding(), TextEncoding::kUtf16Le);
        while (file.ReadLine(line)) lines.emplace_back(line.View());
        return lines;
    }

    const std::vector<std::u16string> expected{u"1970-01-01 00:00:05.007 : ä has 3 sessions",
                                               u"1970-01-01 00:00:05.007 : %1!s! %2!s!"};
    test::TemporaryFolder folder;
    const fs::path program = fs::read_symlink("/proc/self/exe").stem();
    const std::string leaf = program.string() + ".trace.log";
};

TEST_F(TraceTest, GoesToTheTemporaryFolderAnewAtEachRun) {
    for (const char* end : {"", "/"}) {
        EXPECT_EQ(TraceAfter([&] { setenv("TEMP", (folder.GetPath().string() + end).c_str(), 1); }), 0);
        EXPECT_EQ(ReadLines(folder.Name(leaf)), expected);
    }
}

TEST_F(TraceTest, GoesToTheStateFolderWhenNoTemporaryFolderIsNamed) {
    EXPECT_EQ(TraceAfter([&] {
                  unsetenv("TEMP");
                  setenv("XDG_STATE_HOME", (folder.GetPath() / "state").c_str(), 1);
              }),
              0);
    EXPECT_EQ(ReadLines(folder.Name("state/brennmark/" + leaf)), expected);
}

TEST_F(TraceTest, LeavesAloneWhatALinkPointsTo) {
    folder.Write("victim", "text");
    fs::create_symlink("victim", folder.GetPath() / leaf);
    EXPECT_EQ(TraceAfter([&] { setenv("TEMP", folder.GetPath().c_str(), 1); }), 0);
    EXPECT_EQ(folder.Read("victim"), "text");
}

TEST_F(TraceTest, NeverFailsItsCaller) {
    EXPECT_EQ(TraceAfter([&] { setenv("TEMP", (folder.GetPath() / "missing").c_str(), 1); }), 0);
    EXPECT_FALSE(fs::exists(folder.GetPath() / "missing"));
    // As on a full disk: the mark and the start of the first line are written, and nothing else.
    EXPECT_EQ(TraceAfter([&] {
                  setenv("TEMP", folder.GetPath().c_str(), 1);
                  const rlimit limit{10, 10};
                  setrlimit(RLIMIT_FSIZE, &limit);
                  std::signal(SIGXFSZ, SIG_IGN);
              }),
              0);
    EXPECT_EQ(folder.Read(leaf).size(), 10U);
}

}  // namespace
}  // namespace connectdialog
