#include "foundation/vfiletime.h"

#include <cstdlib>
#include <gtest/gtest.h>

#include "foundation/vfiletemplate.h"
#include "platform/clock.h"

namespace connectdialog {
namespace {

constexpr VFileTime kSecond = platform::kFileTimePerSecond;
/// 2024-02-29 03:04:05.006, a Thursday.
constexpr VFileTime kLeapDay = platform::kUnixEpoch + 1'709'175'845 * kSecond + 60'000;

class ZoneTest : public testing::Test {
  protected:
    explicit ZoneTest(const char* zone = "UTC") { setenv("TZ", zone, 1); }
    ~ZoneTest() override { unsetenv("TZ"); }
};
using FileTimeTest = ZoneTest;

TEST_F(FileTimeTest, TellsTheCalendarUpToItsBorders) {
    const struct {
        VFileTime fileTime;
        VSystemTime time;
    } rows[] = {
        {0, {1601, 1, 1, 1, 0, 0, 0, 0}},
        {platform::kUnixEpoch - 1, {1969, 12, 3, 31, 23, 59, 59, 999}},
        {kLeapDay, {2024, 2, 4, 29, 3, 4, 5, 6}},
        {0x7FFFFFFFFFFFFFFF, {30828, 9, 4, 14, 2, 48, 5, 477}},
    };
    for (const auto& row : rows) {
        VSystemTime time;
        EXPECT_TRUE(VFileTimeToUtc(row.fileTime, time));
        EXPECT_EQ(time, row.time) << row.fileTime << " is " << time.year << " " << time.milliseconds;
    }
    VSystemTime time;
    EXPECT_FALSE(VFileTimeToUtc(0x8000000000000000, time));
    EXPECT_EQ(time, VSystemTime());
}

TEST_F(FileTimeTest, ComparesAndSubtracts) {
    EXPECT_EQ(VCompareFileTimes(1, 2), -1);
    EXPECT_EQ(VCompareFileTimes(~VFileTime{0}, 2) + VCompareFileTimes(2, 2), 1);
    EXPECT_EQ(VSubtractFileTimes(3 * kSecond - 1, kSecond), 1);
    EXPECT_EQ(VSubtractFileTimes(kSecond, 3 * kSecond - 1), -1);
    EXPECT_EQ(VSubtractFileTimes(0, ~VFileTime{0}), -1'844'674'407'370);
}

TEST_F(FileTimeTest, LocalTimeFollowsTheRulesOfTheMoment) {
    const struct {
        const char* zone;
        VFileTime fileTime;
        const char16_t* text;
    } rows[] = {
        {"Europe/Berlin", kLeapDay, u"2024-02-29 04:04:05"},
        {"Europe/Berlin", kLeapDay + kSecond * 86400 * 180, u"2024-08-27 05:04:05"},
        {"America/St_Johns", platform::kUnixEpoch, u"1969-12-31 20:30:00"},
        {"XST+10", 0, u""},
        {"XST-10", 0, u"1601-01-01 10:00:00"},
        {"UTC", ~VFileTime{0}, u""},
    };
    for (const auto& row : rows) {
        setenv("TZ", row.zone, 1);
        EXPECT_EQ(VFormatLocalTime(row.fileTime), row.text) << row.zone;
    }
}

class FileTemplateTest : public ZoneTest {
  protected:
    // Names are made from UTC: another zone must not show.
    FileTemplateTest() : ZoneTest("Europe/Berlin") {
        platform::SetClock([] { return kLeapDay; });
        setenv("CONNECTDIALOG_TEST_NAME", "val%%ue", 1);
    }
    ~FileTemplateTest() override {
        platform::SetClock(nullptr);
        unsetenv("CONNECTDIALOG_TEST_NAME");
        unsetenv("U3_APP_DATA_PATH");
    }
};

TEST_F(FileTemplateTest, PutsTheTimeIn) {
    const struct {
        const char16_t* fileTemplate;
        const char16_t* name;
        std::uint32_t code;
        const char16_t* insert;
    } rows[] = {
        {u"a-%Y%M%D-%h%m%s.%t", u"a-20240229-030405.006", 0, nullptr},
        {u"100%%", u"100%", 0, nullptr},
        {u"%CONNECTDIALOG_TEST_NAME%", u"val%ue", 0, nullptr},
        {u"a%", u"", kReportTemplateEndsInToken, nullptr},
        {u"a%xb", u"", kReportUnknownTemplateToken, u"%x"},
        {u"%d%Y", u"", kReportUnknownTemplateToken, u"%d%"},
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
    setenv("U3_APP_DATA_PATH", "D:\\Data", 1);
    VReportMessageParams report;
    EXPECT_EQ(VExpandFileTemplate(u"%u3data%\\%Y.log", report), u"D:\\Data\\2024.log");
}

}  // namespace
}  // namespace connectdialog
