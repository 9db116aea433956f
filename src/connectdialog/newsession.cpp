#include "connectdialog/newsession.h"

#include "config/isessionconfig.h"
#include "imports/dialogkit/vdialog.h"
#include "imports/dialogkit/vwizardsheet.h"
#include "imports/hostcallbacks.h"

namespace connectdialog {

FirstOptionsPage::FirstOptionsPage() : global(FetchGlobalConfig()), former(global->optionsPagePath.Get()) {
    global->optionsPagePath.Set(u"Connection+"_v);
}

FirstOptionsPage::~FirstOptionsPage() {
    if (isRestored) global->optionsPagePath.Set(former);
}

bool RunSessionOptions(ISessionConfig& config, int pageMode, bool multiEdit, bool isNew, VWindow* parent) {
    const SessionOptionsFunction options = GetHostCallbacks().sessionOptions;
    return options != nullptr && options(&config, pageMode, multiEdit, isNew, parent) == kDialogAccepted;
}

bool EditNewSession(ISessionConfig& config, const WizardRunner& wizard, VWindow* parent) {
    const FirstOptionsPage page;
    const VRef<GlobalConfig> global = FetchGlobalConfig();
    VProfile<bool>& useWizard = global->useNewSessionWizard;
    std::int64_t result = kDialogCancelled;
    bool wantsWizard = true;
    if (useWizard.Get() && wizard(config, result, wantsWizard)) {
        if (result != VWizardSheet::kFinished) return false;
        useWizard.Set(wantsWizard);
        if (wantsWizard) return true;
    }
    return RunSessionOptions(config, kPageModeOne, false, true, parent);
}

}  // namespace connectdialog
