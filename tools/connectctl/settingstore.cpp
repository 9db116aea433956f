#include "tools/connectctl/settingstore.h"

#include <nlohmann/json.hpp>

#include "config/isessionconfig.h"
#include "config/settingwalk.h"
#include "foundation/vreportmessageparams.h"
#include "profile/vprofiledata.h"
#include "profile/vprofilekey.h"
#include "sessiondb/sessionpaths.h"
#include "sessiondb/sessiontree.h"
#include "tools/connectctl/output.h"
#include "tools/connectctl/settingvalue.h"
#include "tools/connectctl/toolstore.h"

namespace connectdialog::connectctl {

namespace {

/// Also the Default session is written, which SaveSession leaves alone: here the user edits the template itself.
Failure WriteSession(ISessionConfig& session) {
    VProfileStore store(false);
    VProfileKey key(store.GetRootKey(), BuildSessionKeyPath(session.GetPath()).GetData(), 0);
    session.Save(key, false);
    if (key.AllWritten()) return kDone;
    VReportMessageParams& report = *key.GetImpl()->GetLastReport();
    return report.GetCode() != 0 ? ReportText(report) : "the store refused a value";
}

Failure CheckStored(ISessionConfig& session, VProfileData& setting) {
    const VRef<ISessionConfig> stored = OpenSession(session.GetPath());
    if (!stored) return "there is no session " + Quoted(session.GetPath()) + " any more";
    VProfileData* readBack = FindSetting(*stored, setting.GetName());
    if (readBack != nullptr && GetSettingJson(*readBack) == GetSettingJson(setting)) return kDone;
    std::string text = Quoted(setting.GetName()) + " is " + GetSettingType(setting) + " (" + GetSettingRange(setting) +
                       ") and this session does not take " + GetSettingText(setting);
    if (readBack != nullptr) text += ": it would read " + GetSettingText(*readBack);
    return text;
}

}  // namespace

Failure StoreSetting(ISessionConfig& session, VProfileData& setting) {
    return ChangeStore([&] {
        const Failure failure = WriteSession(session);
        return failure ? failure : CheckStored(session, setting);
    });
}

}  // namespace connectdialog::connectctl
