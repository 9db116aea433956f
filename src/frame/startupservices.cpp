#include "frame/startupservices.h"

#include "foundation/vfiletime.h"
#include "foundation/vpolicies.h"
#include "imports/configpanels.h"
#include "imports/dialogkit/appname.h"
#include "platform/clock.h"
#include "profile/unitofwork.h"
#include "profile/vprofilekey.h"
#include "resources/storenames.h"

namespace connectdialog {

namespace {

constexpr std::int64_t kSecondsPerDay = 86400;
constexpr std::int64_t kDaysBetweenReminders = 30;
constexpr int kQuestionPicture = 2;
constexpr unsigned kNoHelp = 0xFFFFFFFF;

/// Stored times count as unsigned: 32 bits last until 2106.
VFileTime ToFileTime(int unixSeconds) {
    return platform::kUnixEpoch + static_cast<std::uint32_t>(unixSeconds) * platform::kFileTimePerSecond;
}
int ToUnixSeconds(VFileTime time) {
    return static_cast<int>(static_cast<std::uint32_t>((time - platform::kUnixEpoch) / platform::kFileTimePerSecond));
}

bool AskForUpdateCheck(GlobalConfig& global, VWindow* parent) {
    VUnicodeString text;
    text.Format(u"\r\n你至少有30天未检查更新 %1 的新版本。 是否立即检查更新？\r\n", VGetAppName());
    return ShowOptionalMessageBox(parent, text, u"不再提醒(&D)"_v, global.updateReminderSuppressed, u"是"_v, true,
                                  kQuestionPicture, kNoHelp) == 1;
}

}  // namespace

bool CheckPeriodicUpdate(VWindow* parent) {
    VRef<GlobalConfig> global;
    if (!GetGlobalConfig(global, -1) || global->updateReminderSuppressed.Get() != 0) return false;
    if (!VIsPolicyEnabled(u"Enable Check For Updates", VGetAppName().GetData(), u"Global")) return false;
    const VFileTime now = platform::GetFileTimeNow();
    const std::int64_t seconds = VSubtractFileTimes(now, ToFileTime(global->lastUpdateReminder.Get()));
    if (seconds / kSecondsPerDay < kDaysBetweenReminders) return false;
    const bool isWanted = AskForUpdateCheck(*global, parent);
    global->lastUpdateReminder.Set(ToUnixSeconds(now));
    WriteToKey(kGlobalKey, [&](VProfileKey& key) {
        global->lastUpdateReminder.Save(key, false);
        global->updateReminderSuppressed.Save(key, false);
    });
    return isWanted;
}

StartupDialog GetStartupDialog() {
    const VRef<GlobalConfig> global = FetchGlobalConfig();
    // Quick connect first, as where it takes the other's place.
    if (global->quickConnectOnStartup.Get()) return StartupDialog::kQuickConnect;
    return global->connectDialogOnStartup.Get() ? StartupDialog::kConnect : StartupDialog::kNone;
}

}  // namespace connectdialog
