#include "frame/startupservices.h"

#include "frame/configfolderdialog.h"
#include "platform/clock.h"
#include "platform/paths.h"
#include "resources/dialogids.h"
#include "suite/dialogkit/headless/headlessdialog.h"
#include "suite/dialogkit/headless/headlesskit.h"
#include "support/fakesuite.h"
#include "support/temporaryfolder.h"

namespace connectdialog::test {
namespace {

constexpr std::int64_t kDay = 86400;
constexpr std::int64_t kNow = 1'700'000'000;

class ReminderTest : public LibraryTest {
  protected:
    ReminderTest() {
        platform::SetClock([] { return platform::kUnixEpoch + static_cast<std::uint64_t>(now) * 10'000'000; });
        panels.global->lastUpdateReminder.Load(nullptr, u"Last Update Reminder"_v, 0);
        panels.global->updateReminderSuppressed.Load(nullptr, u"Update Reminder Suppressed"_v, 0);
    }
    ~ReminderTest() override { platform::SetClock(nullptr); }
    static inline std::int64_t now = kNow;
};

TEST_F(ReminderTest, ComesAfterThirtyDaysWhateverTheAnswerWas) {
    struct Row {
        std::int64_t now, last;
        int suppressed, answer;
        bool comes;
    };
    const Row rows[] = {
        {kNow, 0, 0, 1, true},
        {kNow, 0, 1, 1, false},
        {kNow, kNow - 30 * kDay, 0, 1, true},
        {kNow, kNow - 30 * kDay, 0, 2, true},
        {kNow, kNow - 30 * kDay + 1, 0, 1, false},
        {kNow, kNow + 400 * kDay, 0, 1, false},  // the clock was turned back
        {-kDay, 0, 0, 1, false},                 // before the count of Unix begins
        {3'000'000'000, kNow, 0, 1, true},       // beyond 31 bits
        {3'000'000'000, 2'999'999'999, 0, 1, false},
    };
    for (const Row& row : rows) {
        now = row.now;
        panels.optionalText.Empty();
        panels.optionalAnswer = row.answer;
        panels.global->lastUpdateReminder.Set(static_cast<int>(row.last));
        panels.global->updateReminderSuppressed.Set(row.suppressed);
        EXPECT_EQ(CheckPeriodicUpdate(nullptr), row.comes && row.answer == 1);
        EXPECT_EQ(!panels.optionalText.IsEmpty(), row.comes) << row.now << " " << row.last;
        EXPECT_EQ(panels.global->lastUpdateReminder.Get(), static_cast<int>(row.comes ? row.now : row.last));
    }
    WithKey(u"Global", [](VProfileKey& key) {
        std::uint32_t stored = 0;
        EXPECT_TRUE(key.ReadDword(u"Last Update Reminder", stored));
        EXPECT_EQ(stored, 3'000'000'000);
    });
    panels.global = nullptr;
    EXPECT_FALSE(CheckPeriodicUpdate(nullptr));
}

TEST_F(LibraryTest, OneDialogAtMostOpensAtTheStart) {
    EXPECT_EQ(GetStartupDialog(), StartupDialog::kNone);
    panels.global->connectDialogOnStartup.Set(true);
    EXPECT_EQ(GetStartupDialog(), StartupDialog::kConnect);
    panels.global->quickConnectOnStartup.Set(true);
    EXPECT_EQ(GetStartupDialog(), StartupDialog::kQuickConnect);
}

TEST_F(LibraryTest, TheConfigFolderIsMadeOrTheDialogStays) {
    const TemporaryFolder folder;
    HeadlessDialogKit kit;
    const std::string inner = folder / "one/two";
    kit.ExpectDialog(ConfigFolderIds::kDialog, [&](HeadlessDialog& dialog) {
        EXPECT_EQ(dialog.GetTitle(), u"NorHalden");
        EXPECT_EQ(dialog.GetText(ConfigFolderIds::kIntro),
                  u"这是你第一次运行 NorHalden®。 NorHalden 需要设置可以存储配置数据的文件夹。");
        kit.AnswerBoxes([](const VUnicodeString& text, unsigned) {
            EXPECT_EQ(text.View().find_first_of(u"\\\n"), text.View().npos) << "a path as the system writes it";
            return kAnswerOk;
        });
        for (const char* bad : {"", "relative", "/proc/x", "/dev/null/x", "/a\nb"}) {
            dialog.Type(ConfigFolderIds::kPath, VUnicodeString(bad));
            EXPECT_TRUE(dialog.Press(kIdOk));
            EXPECT_FALSE(dialog.IsClosed()) << bad;
        }
        EXPECT_EQ(kit.GetBoxes().size(), 5U);
        kit.ExpectFolder(platform::FromNativePath(inner).c_str());
        EXPECT_TRUE(dialog.Press(ConfigFolderIds::kBrowse));
        EXPECT_EQ(dialog.GetText(ConfigFolderIds::kPath), VUnicodeString(inner.c_str()));
        EXPECT_TRUE(dialog.Press(kIdOk));
    });
    ConfigFolderDialog dialog(u"\\first"_v, nullptr, nullptr);
    EXPECT_EQ(dialog.DoModal(), kDialogAccepted);
    EXPECT_EQ(platform::ToNativePath(dialog.GetPath()), inner);
    EXPECT_EQ(kit.TakeFaults(), "");
}

}  // namespace
}  // namespace connectdialog::test
