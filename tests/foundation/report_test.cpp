// What is told: reports, their messages, times, and the trace.
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "foundation/messageformat.h"
#include "foundation/messagetable.h"
#include "foundation/stringerrors.h"
#include "foundation/vfiletime.h"
#include "foundation/vreportmessageparams.h"
#include "foundation/vtextfile.h"
#include "foundation/vtrace.h"
#include "foundation/vunicodestring.h"
#include "platform/clock.h"
#include "platform/lasterror.h"
#include "support/childprocess.h"
#include "support/temporaryfolder.h"

namespace connectdialog {
namespace {

using Text = std::u16string;

TEST(Report, FindsItsText) {
    const std::tuple<std::uint32_t, const char16_t*, const char16_t*> rows[] = {
        {5, u"unused", u"Access was denied."},
        {0x61090001, u"a", u"\"a\" 未找到。"},
        {0xE1090003, u"a", u"以下会话正在使用中，不能删除：\r\na"},
    };
    for (const auto& [code, insert, expected] : rows) {
        VReportMessageParams report(code);
        if (insert != nullptr) report.AddInsert(insert);
        EXPECT_EQ(report.GetTextLength(), 0u);
        EXPECT_EQ(Text(report.GetText()), expected);
        EXPECT_EQ(report.GetTextLength(), Text(expected).size());
    }
}

TEST(Report, LooksInTheOwnModuleBeforeTheFallbackAndAfterTheSystem) {
    int module = 0;
    const MessageRow rows[] = {{5, u"never shown"}, {0xE1040047, u"own %1"}};
    RegisterMessageTable(&module, rows);
    EXPECT_EQ(Text(VReportMessageParams(5, &module).GetText()), u"Access was denied.");
    VReportMessageParams own(0xE1040047, &module);
    own.AddInsert("n\xC3\xA4me");
    EXPECT_EQ(Text(own.GetText()), u"own n\u00E4me");
    RemoveMessageTables(&module);
    VReportMessageParams fallback(0xE1040047, &module);
    fallback.AddInsert(u"a");
    EXPECT_NE(Text(fallback.GetText()).find(u"“a”"), Text::npos);
    EXPECT_EQ(Text(VReportMessageParams(0xE1040099).GetText()),
              u"Could not retrieve the error text for error code 0xe1040099.\r\n"
              u"Status codes from FormatMessage were " +
                  platform::GetModuleFile(platform::GetLibraryModule()) + u":317 and 317.");
}

struct TestRouter : VReportMessageRouter {
    std::uint32_t HandleReport(IReportMessageParams* report) override {
        handled = report;
        EXPECT_EQ(Text(report->GetInserts()[0]), u"insert");
        return 42;
    }
    IReportMessageParams* handled = nullptr;
};

TEST(Report, IsRoutedToTheHost) {
    static TestRouter router;
    VReportMessageParams report(0x61090001);
    report.AddInsert(u"insert");
    EXPECT_EQ(RouteReport(&report), 0x61090001u);
    SetReportRouterGetter([]() -> VReportMessageRouter* { return &router; });
    EXPECT_EQ(RouteReport(&report), 42u);
    EXPECT_EQ(router.handled, &report);
    EXPECT_EQ(RouteReportCopy(&report), 42u);
    EXPECT_NE(router.handled, &report);
    SetReportFactory([](std::uint32_t, ModuleHandle) -> IReportMessageParams* { return nullptr; });
    EXPECT_EQ(RouteReportCopy(&report), 0x61090001u);
    SetReportFactory(nullptr);
    SetReportRouterGetter(nullptr);
}

using Arguments = std::vector<FormatArgument>;

template <class... Values>
Arguments Of(const Values&... values) {
    return {FormatArgument(values)...};
}

std::u16string Expand(const char16_t* text, const Arguments& arguments, std::uint32_t flags = kMessagePlain) {
    const std::size_t length = ExpandMessage(text, arguments.data(), arguments.size(), flags, nullptr);
    std::u16string message(length, u'?');
    EXPECT_EQ(ExpandMessage(text, arguments.data(), arguments.size(), flags, message.data()), length);
    return message;
}

struct Row {
    const char16_t* text;
    Arguments arguments;
    const char16_t* expected;
};

TEST(MessageFormat, ExpandsInsertsAndEscapes) {
    const Row rows[] = {
        {u"%2%1%2", Of(u"a", u"b"), u"bab"},
        {u"%10", Of(u"1", u"2", u"3", u"4", u"5", u"6", u"7", u"8", u"9", u"ten"), u"ten"},
        {u"%1 of %2!d!", Of(u"a", 7), u"a of 7"},
        {u"100%% a%ab% c%.d%!e", {}, u"100% aab c.d!e"},
        {u"a%nb%rc", {}, u"a\r\nb\rc"},
        {u"kept%0 dropped", {}, u"kept"},
        {u"%1!hs! %1!ls! %1!S! %1", Of("narrow \xC3\xA4"), u"narrow \u00E4 narrow \u00E4 narrow \u00E4 narrow \u00E4"},
        {u"[%1!6s!|%1!-6s!|%1!.2s!|%1!4.1s!]", Of(u"abc"), u"[   abc|abc   |ab|   a]"},
        {u"%1!c!%2!c!%2!lc!", Of(u'\u4E00', 65), u"\u4E00AA"},
        {u"%1!d! %1!i! %1!u! %1!x!", Of(-1), u"-1 -1 4294967295 ffffffff"},
        {u"%1!lu! %1!I64d! %1!llX!", Of(std::uint64_t{0x123456789ABCDEF0}),
         u"1311768467463790320 1311768467463790320 123456789ABCDEF0"},
        {u"%1!02X! %1!#x! %1!08x! %1!#o!", Of(10), u"0A 0xa 0000000a 012"},
        {u"[%1!5d!|%1!-5d!|%1!05d!|%1!+d!|%1! d!|%1!.3d!|%1!05.3d!]", Of(42), u"[   42|42   |00042|+42| 42|042|  042]"},
        {u"%1!f! %1!.1f! %1!08.2f! %1!E! %1!g!", Of(-3.25), u"-3.250000 -3.2 -0003.25 -3.250000E+00 -3.25"},
        {u"%1", Of(static_cast<const char16_t*>(nullptr)), u"(null)"},
    };
    for (const Row& row : rows) EXPECT_EQ(Expand(row.text, row.arguments), row.expected);
}

TEST(MessageFormat, RefusesWhatDoesNotFit) {
    const Row rows[] = {
        {u"%1", {}, nullptr},           {u"%1", Of(5), nullptr},
        {u"%1!d!", Of(1.5), nullptr},   {u"%1!c!", Of(0x10000), nullptr},
        {u"%1!n!", Of(1), nullptr},     {u"%1!*d!", Of(1, 2), nullptr},
        {u"%1!5000d!", Of(1), nullptr}, {u"%1!.99999999999999999999s!", Of(u"a"), nullptr},
    };
    for (const Row& row : rows) EXPECT_THROW(Expand(row.text, row.arguments), InvalidParameter);
    EXPECT_EQ(Expand(u"%1!4096d!", Of(1)).size(), kMaxMessageField);
}

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

TEST_F(TraceTest, GoesToTheTemporaryFolderAnewAtEachRunOrToTheStateFolderAndNeverFails) {
    for (const char* end : {"", "/", "/missing"})
        EXPECT_EQ(TraceAfter([&] { setenv("TEMP", (folder.GetPath().string() + end).c_str(), 1); }), 0);
    EXPECT_EQ(ReadLines(folder.Name(leaf)), expected);
    EXPECT_FALSE(fs::exists(folder.GetPath() / "missing"));
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

}  // namespace
}  // namespace connectdialog
