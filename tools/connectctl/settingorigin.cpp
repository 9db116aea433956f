#include "tools/connectctl/settingorigin.h"

#include "foundation/vreportmessageparams.h"
#include "platform/lasterror.h"
#include "profile/vprofiledata.h"
#include "sessiondb/sessionpaths.h"

namespace connectdialog::connectctl {

namespace {

/// What older versions stored of a setting, under another name.
struct OlderForm {
    std::u16string_view name;
    const char16_t* olderName;
};
constexpr OlderForm kOlderForms[] = {
    {u"Login Script V2", u"Login Script"},
    {u"Keymap v3", u"Keymap v2"},
    {u"Keymap v3", u"Keymap"},
    {u"Normal Font v2", u"Font Family"},
    {u"Normal Font v2", u"Font Size"},
    {u"Narrow Font v2", u"Font Family"},
    {u"Narrow Font v2", u"Font Size"},
    {u"Firewall Name", u"Use Firewall"},
    {u"Enable 80-132 Column Switching", u"Enable 80/132 Column Switching"},
};

}  // namespace

SettingOrigins::SettingOrigins(const VUnicodeString& sessionPath)
    : store(true), key(store.GetRootKey(), BuildSessionKeyPath(sessionPath).GetData(), 0) {}

const char* SettingOrigins::Of(const VProfileData& setting) {
    if (!setting.IsChanged() && !setting.IsMissing()) return "stored";
    if (Has(setting.GetName().GetData())) return "corrected";
    for (const OlderForm& form : kOlderForms)
        if (setting.GetName() == form.name && Has(form.olderName)) return "stored";
    return "default";
}

bool SettingOrigins::Has(const char16_t* name) {
    std::uint32_t number = 0;
    return key.ReadDword(name, number) || key.GetImpl()->GetLastReport()->GetCode() == platform::kDatatypeMismatch;
}

}  // namespace connectdialog::connectctl
