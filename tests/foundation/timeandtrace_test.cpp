#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <vector>

#include "foundation/vfiletemplate.h"
#include "foundation/vfiletime.h"
#include "foundation/vtextfile.h"
#include "foundation/vtrace.h"
#include "platform/clock.h"
#include "platform/lasterror.h"
#include "support/childprocess.h"
#include "support/temporaryfolder.h"

namespace connectdialog {
namespace {

constexpr VFileTime kSecond = platform::kFileTimePerSecond;
/// 2024-02-29 03:04:05.006, a Thursday.
constexpr VFileTime kLeapDay = platform::kUnixEpoch + 1'709'175'845 * kSecond + 60'000;

class FileTimeTest : public testing::Test {
  protected:
    FileTimeTest() { setenv("TZ", "UTC", 1); }
    ~FileTimeTest() override {
        unsetenv("TZ");
        platform::SetClock(nullptr);
    }
};

TEST_F(FileTimeTest, TellsTheCalendarUpToItsBorders) {
    const std::pair<VFileTime, VSystemTime> rows[] = {
        {0, {1601, 1, 1, 1, 0, 0, 0, 0}},
        {kLeapDay, {2024, 2, 4, 29, 3, 4, 5, 6}},
        {0x7FFFFFFFFFFFFFFF, {30828, 9, 4, 14, 2, 48, 5, 477}},
    };
    for (const auto& [fileTime, expected] : rows) {
        VSystemTime time;
        EXPECT_TRUE(VFileTimeToUtc(fileTime, time));
        EXPECT_EQ(time, expected) << fileTime << " is " << time.year << " " << time.milliseconds;
    }
    VSystemTime time;
    EXPECT_FALSE(VFileTimeToUtc(0x8000000000000000, time));
    EXPECT_EQ(time, VSystemTime());
}

TEST_F(FileTimeTest, LocalTimeFollowsTheRulesOfTheMoment) {
    const std::tuple<const char*, VFileTime, const char16_t*> rows[] = {
        {"Europe/Berlin", kLeapDay, u"2024-02-29 04:04:05"},
        {"Europe/Berlin", kLeapDay + kSecond * 86400 * 180, u"2024-08-27 05:04:05"},
        {"XST+10", 0, u""},
        {"UTC", ~VFileTime{0}, u""},
    };
    for (const auto& [zone, fileTime, text] : rows) {
        setenv("TZ", zone, 1);
        EXPECT_EQ(VFormatLocalTime(fileTime), text) << zone;
    }
}

TEST_F(FileTimeTest, ATemplateOfAFilesNameTakesTheTimeInUtc) {
    setenv("TZ", "Europe/Berlin", 1);
    platform::SetClock([] { return kLeapDay; });
    const struct {
        const char16_t* fileTemplate;
        const char16_t* name;
        std::uint32_t code;
        const char16_t* insert;
    } rows[] = {
        {u"a-%Y%M%D-%h%m%s.%t", u"a-20240229-030405.006", 0, nullptr},
        {u"a%", u"", kReportTemplateEndsInToken, nullptr},
        {u"a%xb", u"", kReportUnknownTemplateToken, u"%x"},
        {u"%u3data%\\x", u"", kReportUnknownTemplateToken, u"%u3data%"},
    };
    for (const auto& row : rows) {
        VReportMessageParams report(77);
        EXPECT_EQ(VExpandFileTemplate(row.fileTemplate, report), row.name);
        EXPECT_EQ(report.GetCode(), row.code);
        ASSERT_EQ(report.GetInsertCount(), row.insert != nullptr ? 1U : 0U);
        if (row.insert != nullptr) {
            EXPECT_EQ(std::u16string_view(report.GetInserts()[0]), row.insert);
        }
    }
}

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
