// Where the values of a session come from.
#pragma once

#include "profile/vprofilekey.h"

namespace connectdialog {
class VProfileData;
}

namespace connectdialog::connectctl {

/// Looks into the session's key beside the session itself, which does not tell a value that was not there from one that
/// it could not take.
class SettingOrigins {
  public:
    explicit SettingOrigins(const VUnicodeString& sessionPath);

    /// Of a setting of that session, as it was loaded:
    ///   "stored"     the store has it so; also in the form of an older version
    ///   "default"    the store has no value of this name; the setting may follow from others
    ///   "corrected"  what the store has is no value of this setting, or another setting called for another one
    const char* Of(const VProfileData& setting);

  private:
    bool Has(const char16_t* name);

    VProfileStore store;
    VProfileKey key;
};

}  // namespace connectdialog::connectctl
