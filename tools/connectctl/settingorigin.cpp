#include "tools/connectctl/settingorigin.h"

#include "foundation/vreportmessageparams.h"
#include "platform/lasterror.h"
#include "profile/vprofiledata.h"
#include "sessiondb/sessionpaths.h"

namespace connectdialog::connectctl {

SettingOrigins::SettingOrigins(const VUnicodeString& sessionPath)
    : store(true), key(store.GetRootKey(), BuildSessionKeyPath(sessionPath).GetData(), 0) {}

const char* SettingOrigins::Of(const VProfileData& setting) {
    if (!setting.IsChanged() && !setting.IsMissing()) return "stored";
    std::uint32_t number = 0;
    const bool isThere = key.ReadDword(setting.GetName().GetData(), number) ||
                         key.GetImpl()->GetLastReport()->GetCode() == platform::kDatatypeMismatch;
    return isThere ? "corrected" : "default";
}

}  // namespace connectdialog::connectctl
