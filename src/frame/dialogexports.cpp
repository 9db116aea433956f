// The entry points of the connect dialog.
#include "connectdialog/ui/connectdialog.h"
#include "frame/connectdialogapi.h"

namespace connectdialog {

namespace {

/// One further reference on each: the dialog's own go with it.
void KeepResults(const ConnectDialog& dialog) {
    for (const VRef<ISessionConfig>& config : dialog.GetChosenConfigs())
        GetModuleState().connectResultConfigs.Add(config);
}

std::int64_t Choose(ConnectDialog& dialog, bool& openInTab) {
    const std::int64_t result = dialog.DoModal();
    if (result != kDialogAccepted) return result;
    KeepResults(dialog);
    openInTab = dialog.IsOpenInTab();
    return result;
}

}  // namespace

std::int64_t ShowConnectDialog(const char16_t* title, bool addSystemMenu, bool tabAlways, bool tabsAvailable,
                               VWindow* parent, bool& openInTab) {
    CleanupConnectDialogSessionConfigs();
    ConnectDialog dialog(title, {addSystemMenu, tabAlways, false, tabsAvailable, nullptr}, parent);
    return Choose(dialog, openInTab);
}

std::int64_t ShowConnectDialogFind(const char16_t* title, bool tabAlways, VWindow* parent, bool& openInTab) {
    CleanupConnectDialogSessionConfigs();
    ConnectDialog dialog(title, {false, tabAlways, false, true, nullptr}, parent);
    dialog.BeginWithFind();
    return Choose(dialog, openInTab);
}

std::int64_t ShowConnectDialogBrowseMode(const char16_t* title, VUnicodeString& path, VWindow* parent) {
    ConnectDialog dialog(title, {false, true, true, true, &path}, parent);
    const std::int64_t result = dialog.DoModal();
    if (result == kDialogAccepted) {
        KeepResults(dialog);
        const VRef<ISessionConfig> first = VRef<ISessionConfig>::Adopt(GetConnectDialogSessionConfig(0));
        if (first) path = first->GetPath();
    }
    CleanupConnectDialogSessionConfigs();
    return result;
}

std::int64_t ShowConnectDialogMultiSelectBrowseMode(const char16_t* title, VArray<VUnicodeString>& paths,
                                                    VWindow* parent) {
    ConnectDialog dialog(title, {false, true, true, true, nullptr}, parent);
    const std::int64_t result = dialog.DoModal();
    if (result != kDialogAccepted) return result;
    for (const VUnicodeString& path : dialog.GetChosenPaths()) paths.Add(path);
    return result;
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

}  // namespace connectdialog
