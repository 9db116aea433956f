// What the library keeps at module level: one instance per process, empty until the host sets it.
#pragma once

#include <cstdint>

#include "config/isessionconfig.h"
#include "foundation/isynchobject.h"
#include "foundation/varray.h"
#include "foundation/vunicodestring.h"
#include "platform/modules.h"
#include "resources/accelerators.h"

namespace connectdialog {

class VWindow;

/// The host's session options dialog: edits `config` in place; 1 means accepted. `pageMode` is 0 for one session and 4
/// for several.
using SessionOptionsFunction = std::int64_t (*)(ISessionConfig* config, int pageMode, bool multiEdit, bool isNewSession,
                                                VWindow* parent);
/// The host's help; the library calls it only as (dialog window, 11, 0).
using HelpFunction = void (*)(VWindow* window, unsigned command, unsigned long data);

struct ModuleState {
    // Set when the library is loaded.
    ModuleHandle moduleInstance;
    AcceleratorTable connectAccelerators;
    std::uint32_t globalConfigChangeMessage;
    std::uint32_t createNewTabMessage;
    std::uint32_t wakestoneShowSelectionMessage;
    std::uint32_t wakestoneCanExitApplicationMessage;

    // Set by the host. The getters of the profile factory and of the report router stand with those who call them:
    // profile/vprofilekey.h and foundation/vreportmessageparams.h.
    VRef<ISynchObject> toolbarLock;
    VUnicodeString applicationCommandLine;
    SessionOptionsFunction sessionOptionsCallback = nullptr;
    HelpFunction helpCallback = nullptr;
    bool connectClassRegistered = false;

    /// The result of the last connect dialog: one reference each.
    VArray<VRef<ISessionConfig>> connectResultConfigs;
    bool specialFunctionsLoaded = false;

    ModuleState();
};

ModuleState& GetModuleState();

}  // namespace connectdialog
