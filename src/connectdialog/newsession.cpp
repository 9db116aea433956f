#include "connectdialog/newsession.h"

#include "config/isessionconfig.h"
#include "imports/configpanels.h"
#include "imports/dialogkit/vdialog.h"
#include "imports/dialogkit/vwizardsheet.h"
#include "imports/hostcallbacks.h"
#include "sessiondb/entryoperations.h"
#include "sessiondb/sessiontree.h"

namespace connectdialog {

namespace {

bool SetUpNewSession(ISessionConfig& config, VWindow* parent, const WizardRunner& wizard) {
    const FirstOptionsPage page;
    const VRef<GlobalConfig> global = FetchGlobalConfig();
    VProfile<bool>& useWizard = global->useNewSessionWizard;
    std::int64_t result = kDialogCancelled;
    bool wantsWizard = true;
    if (useWizard.Get() && wizard(config, parent, result, wantsWizard)) {
        if (result != VWizardSheet::kFinished) return false;
        useWizard.Set(wantsWizard);
        if (wantsWizard) return true;
    }
    return RunSessionOptions(config, kPageModeOne, false, true, parent);
}

}  // namespace

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

VRef<ISessionConfig> PrepareNewSession(const VUnicodeString& folder) {
    VRef<ISessionConfig> config = OpenSession(kDefaultSession);
    if (!config) return config;
    config->SetPath(folder);
    config->SetName(MakeUniqueName(folder, u"New"_v));
    return config;
}

bool EditNewSession(ISessionConfig& config, VWindow* parent, const WizardRunner& wizard) {
    const VUnicodeString folder = config.GetPath();
    const VUnicodeString offered = config.GetName();
    if (!SetUpNewSession(config, parent, wizard)) return false;
    if (!ValidateSessionName(folder, offered, config.GetName(), true, parent)) config.SetName(offered);
    return true;
}

}  // namespace connectdialog
