// The dialog entry points. A dialog that this version does not have is closed with nothing chosen.
#include "frame/connectdialogapi.h"

namespace connectdialog {

std::int64_t ShowConnectDialog(const char16_t*, bool, bool, bool, VWindow*, bool&) {
    CleanupConnectDialogSessionConfigs();
    return kDialogCancelled;
}
std::int64_t ShowConnectDialogBrowseMode(const char16_t*, VUnicodeString&, VWindow*) {
    CleanupConnectDialogSessionConfigs();
    return kDialogCancelled;
}
std::int64_t ShowConnectDialogMultiSelectBrowseMode(const char16_t*, VArray<VUnicodeString>&, VWindow*) {
    return kDialogCancelled;
}

unsigned GetConnectDialogSessionConfigCount() {
    return static_cast<unsigned>(GetModuleState().connectResultConfigs.GetCount());
}
ISessionConfig* GetConnectDialogSessionConfig(unsigned index) {
    const VArray<VRef<ISessionConfig>>& results = GetModuleState().connectResultConfigs;
    if (index >= results.GetCount()) return nullptr;
    return VRef(results[index]).Detach();
}
void CleanupConnectDialogSessionConfigs() {
    GetModuleState().connectResultConfigs.Clear();
}

bool CheckPeriodicUpdate(VWindow*) {
    return false;
}

}  // namespace connectdialog
