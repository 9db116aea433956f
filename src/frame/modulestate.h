// What the library keeps at module level: one instance per process, empty until the host sets it.
#pragma once

#include <cstdint>

#include "config/isessionconfig.h"
#include "foundation/varray.h"
#include "platform/modules.h"
#include "resources/accelerators.h"

namespace connectdialog {

struct ModuleState {
    // Set when the library is loaded.
    ModuleHandle moduleInstance;
    AcceleratorTable connectAccelerators;
    std::uint32_t globalConfigChangeMessage;
    std::uint32_t createNewTabMessage;
    std::uint32_t wakestoneShowSelectionMessage;
    std::uint32_t wakestoneCanExitApplicationMessage;

    // Set by the host. What others below call stands with them: the getters of the profile factory and of the report
    // router in profile/vprofilekey.h and foundation/vreportmessageparams.h, the rest in imports/hostcallbacks.h.
    bool connectClassRegistered = false;

    /// The result of the last connect dialog: one reference each.
    VArray<VRef<ISessionConfig>> connectResultConfigs;
    bool specialFunctionsLoaded = false;

    ModuleState();
};

ModuleState& GetModuleState();

}  // namespace connectdialog
