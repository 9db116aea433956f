// What the policies of the machine and the user allow.
#pragma once

namespace connectdialog {

/// Whether user names may be kept in the store. Asked once and then fixed for the process. Either name may be null.
bool VCanSaveUsernames(const char16_t* product, const char16_t* secondary);
/// Whether passwords may be kept; never when user names may not. Fixed likewise.
bool VCanSavePasswords(const char16_t* product, const char16_t* secondary);

}  // namespace connectdialog
