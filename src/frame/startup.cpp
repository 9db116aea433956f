// The start-up operations.
#include <array>

#include "foundation/vmodulefunctions.h"
#include "foundation/vpath.h"
#include "frame/connectdialogapi.h"
#include "frame/upgrade.h"
#include "imports/configpanels.h"
#include "imports/dialogkit/windowclass.h"
#include "sessiondb/sessiondb.h"

namespace connectdialog {

namespace {

constexpr std::int32_t kDialogWindowExtra = 30;
constexpr std::int32_t kDialogBackground = 6;

bool RegisterConnectClass(VIcon* icon) {
    const WindowClass windowClass{u"Brennmark Software Connect Dialog"_v, icon, kDialogWindowExtra, kDialogBackground};
    const std::uint32_t failure = RegisterWindowClass(windowClass);
    return failure == 0 || failure == kClassAlreadyExists;
}

template <class Function>
void** PointerOf(Function*& function) {
    return reinterpret_cast<void**>(&function);
}

}  // namespace

void (*g_pfnLaunchKeygenWizard)(SSH2::IKeyGenerationWizardSink* sink, VWindow* parent) = nullptr;
void (*g_pfnLaunchConvertKeyWizard)(VWindow* parent) = nullptr;
void (*g_pfnExportPublickKey)() = nullptr;
void (*g_pfnManageAgentKeys)(VProfileListViewState& state, VWindow* parent) = nullptr;

void ConnectDialogDllInit(VReportMessageRouter* (*routerGetter)(), ISynchObject* toolbarLock) {
    SetReportRouterGetter(routerGetter);
    InstallSessionDatabase();
    GetHostCallbacks().toolbarLock = VRef<ISynchObject>::Share(toolbarLock);
}

void ConnectDialogDllInitProfileFactory(ProfileFactoryGetter factoryGetter) {
    SetProfileFactoryGetter(factoryGetter);
}

void ConnectDialogInitApplicationCommandLine(const char16_t* commandLine) {
    GetHostCallbacks().applicationCommandLine = commandLine;
}

void ConnectDialogInitGUI(VIcon* icon, SessionOptionsFunction sessionOptions, HelpFunction help) {
    GetHostCallbacks().sessionOptions = sessionOptions;
    GetHostCallbacks().help = help;
    GetModuleState().connectClassRegistered = RegisterConnectClass(icon);
    UpgradeStoredData();
    ConfigPanelsInitGUI(ShowConnectDialogMultiSelectBrowseMode, nullptr);
}

void GetSpecialFunctions(const char16_t* folder, const char16_t* file) {
    ModuleState& state = GetModuleState();
    if (state.specialFunctionsLoaded) return;
    state.specialFunctionsLoaded = true;
    const std::array functions = {
        ModuleFunction{PointerOf(g_pfnLaunchKeygenWizard), "LaunchKeygenWizard", true, false},
        ModuleFunction{PointerOf(g_pfnLaunchConvertKeyWizard), "LaunchConvertKeyWizard", true, false},
        ModuleFunction{PointerOf(g_pfnExportPublickKey), "LaunchExportPublicKeyFromCertificateWizard", true, false},
        ModuleFunction{PointerOf(g_pfnManageAgentKeys), "LaunchManageAgentKeys", true, false},
    };
    // Every function is optional: the host learns of a failure from null pointers.
    LoadModuleFunctions(VJoinPath(folder, file), functions);
}

unsigned GetGlobalConfigChangeMessage() {
    return GetModuleState().globalConfigChangeMessage;
}
unsigned GetCreateNewTabMessage() {
    return GetModuleState().createNewTabMessage;
}
unsigned GetWakestoneShowSelectionMessage() {
    return GetModuleState().wakestoneShowSelectionMessage;
}
unsigned GetWakestoneCanExitApplicationMessage() {
    return GetModuleState().wakestoneCanExitApplicationMessage;
}

}  // namespace connectdialog
