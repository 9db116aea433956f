// The entry points of the library.
//
// The host calls, once and before it shows anything: ConnectDialogDllInitProfileFactory and ConnectDialogDllInit (in
// either order), ConnectDialogInitApplicationCommandLine, ConnectDialogInitGUI, and optionally GetSpecialFunctions.
// From then on any dialog, from its user-interface thread. There is no stop call: the host drains the results of
// ShowConnectDialog with CleanupConnectDialogSessionConfigs.
//
// None of these reports a failure but through a dialog's result: 1 accepted, 2 cancelled or closed.
#pragma once

#include <cstdint>

#include "connectdialog/shortcutnamedialog.h"
#include "foundation/varray.h"
#include "foundation/vunicodestring.h"
#include "frame/configfolderdialog.h"
#include "frame/modulestate.h"
#include "frame/startupservices.h"
#include "imports/dialogkit/vdialog.h"
#include "imports/hostcallbacks.h"
#include "profile/vprofilekey.h"
#include "quickconnect/hostnameprompt.h"
#include "quickconnect/quickconnect.h"
#include "wizard/newsessionwizard.h"

namespace SSH2 {
class IKeyGenerationWizardSink;
}

namespace connectdialog {

class VIcon;
class VProfileListViewState;
class VReportMessageRouter;

// Start-up.

/// Keeps the getter of the report router (it may be null, and then no report is shown) and a reference on the lock of
/// the button bars (it may be null); the one before is released.
void ConnectDialogDllInit(VReportMessageRouter* (*routerGetter)(), ISynchObject* toolbarLock);

/// Keeps the getter of the store factory, which is asked each time a store is opened.
void ConnectDialogDllInitProfileFactory(ProfileFactoryGetter factoryGetter);

/// Sets the text that stands for "%1" in launch commands. Null is the empty text.
void ConnectDialogInitApplicationCommandLine(const char16_t* commandLine);

/// Keeps the callbacks, registers the dialog's window class with the host's icon, brings stored data of older versions
/// up to date once, and introduces the library to its neighbours. Requires: the store factory is known.
void ConnectDialogInitGUI(VIcon* icon, SessionOptionsFunction sessionOptions, HelpFunction help);

/// Looks for the optional key tools in a plug-in module. Only the first call does anything, found or not.
void GetSpecialFunctions(const char16_t* folder, const char16_t* file);

extern void (*g_pfnLaunchKeygenWizard)(SSH2::IKeyGenerationWizardSink* sink, VWindow* parent);
extern void (*g_pfnLaunchConvertKeyWizard)(VWindow* parent);
extern void (*g_pfnExportPublickKey)();
extern void (*g_pfnManageAgentKeys)(VProfileListViewState& state, VWindow* parent);

// Window messages that all applications which load the library agree on. The library sends none of them.

unsigned GetGlobalConfigChangeMessage();
unsigned GetCreateNewTabMessage();
unsigned GetWakestoneShowSelectionMessage();
unsigned GetWakestoneCanExitApplicationMessage();

// The connect dialog.

/// Releases the results of the last call and shows the dialog. On 1 the chosen sessions are the new results and
/// `openInTab` tells where they go; on any other result it stays.
std::int64_t ShowConnectDialog(const char16_t* title, bool addSystemMenu, bool tabAlways, bool tabsAvailable,
                               VWindow* parent, bool& openInTab);
/// The same dialog, in which the user is asked first what to find.
std::int64_t ShowConnectDialogFind(const char16_t* title, bool tabAlways, VWindow* parent, bool& openInTab);
/// Lets the user pick one session, `path` at first; on 1 it is the path of the choice, else it stays.
std::int64_t ShowConnectDialogBrowseMode(const char16_t* title, VUnicodeString& path, VWindow* parent);
/// Lets the user pick sessions and folders; on 1 their paths are appended.
std::int64_t ShowConnectDialogMultiSelectBrowseMode(const char16_t* title, VArray<VUnicodeString>& paths,
                                                    VWindow* parent);
unsigned GetConnectDialogSessionConfigCount();
/// One reference for the caller; null when `index` is not below the count.
ISessionConfig* GetConnectDialogSessionConfig(unsigned index);
void CleanupConnectDialogSessionConfigs();

// Smaller dialogs.

// Quick connect stands in quickconnect/quickconnect.h; LaunchHostnamePromptDialog and UpdateHostnameForConfig stand in
// quickconnect/hostnameprompt.h; ShortcutNameDialog stands in connectdialog/shortcutnamedialog.h; NewSessionWizard and
// what it is made of in wizard/; ConfigFolderDialog in frame/configfolderdialog.h; CheckPeriodicUpdate in
// frame/startupservices.h.

}  // namespace connectdialog
