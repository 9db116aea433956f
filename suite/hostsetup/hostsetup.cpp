#include "suite/hostsetup/hostsetup.h"

#include "foundation/texttools.h"
#include "frame/connectdialogapi.h"
#include "imports/dialogkit/appname.h"
#include "platform/modules.h"
#include "suite/configpanels/referenceconfigpanels.h"

namespace connectdialog {

namespace {

VProfileStoreFactory* currentFactory = nullptr;

}  // namespace

ReferenceConfigPanels& GetReferenceConfigPanels() {
    static ReferenceConfigPanels panels;
    return panels;
}

void InstallReferenceSuite(const VUnicodeString& appName, VProfileStoreFactory& factory) {
    currentFactory = &factory;
    SetAppName(appName);
    GetReferenceConfigPanels().ReloadGlobalConfig();
    InstallConfigPanels(&GetReferenceConfigPanels());

    const VUnicodeString program = VQuoteIfNeeded(VUnicodeString(platform::GetExecutablePath()), u"\"\"", u" ");
    ConnectDialogDllInitProfileFactory([] { return currentFactory; });
    ConnectDialogDllInit(nullptr, nullptr);
    ConnectDialogInitApplicationCommandLine(program.GetData());
    ConnectDialogInitGUI(nullptr, nullptr, nullptr);
}

}  // namespace connectdialog
