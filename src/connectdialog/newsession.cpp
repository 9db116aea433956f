#include "connectdialog/newsession.h"

#include <vector>

#include "config/isessionconfig.h"
#include "config/protocolchoice.h"
#include "foundation/vreportmessageparams.h"
#include "imports/configpanels.h"
#include "imports/dialogkit/idialogkit.h"
#include "imports/dialogkit/vdialog.h"
#include "imports/dialogkit/vwizardsheet.h"
#include "imports/hostcallbacks.h"
#include "profile/unitofwork.h"
#include "sessiondb/entryoperations.h"
#include "sessiondb/sessiontree.h"

namespace connectdialog {

namespace {

/// That a side is to have no protocol any more is no change that a session tells, and none that is copied.
class RemovedProtocols {
  public:
    explicit RemovedProtocols(const ISessionConfig& config) {
        for (const ProtocolSide side : kProtocolSides) before.push_back(GetProtocol(config, side));
    }

    /// Finds out which the user removed since then.
    bool Find(const ISessionConfig& config) {
        for (std::size_t i = 0; i < before.size(); ++i) {
            const VUnicodeString after = GetProtocol(config, kProtocolSides[i]);
            if (after.View() == kNoProtocol && after != before[i]) removed.push_back(kProtocolSides[i]);
        }
        return !removed.empty();
    }
    void RemoveFrom(ISessionConfig& other) const {
        for (const ProtocolSide side : removed) SelectProtocol(other, side, kNoProtocol);
    }

  private:
    std::vector<VUnicodeString> before;
    std::vector<ProtocolSide> removed;
};

/// Appends to `failure` why the store refused, when it tells.
bool SaveAsOneUnit(const std::function<bool()>& save, VUnicodeString& failure) {
    const VWaitCursor wait;
    VProfileStore unit(false);
    if (RunAsUnit(unit, save)) return true;
    VReportMessageParams& cause = *unit.GetLastReport();
    if (TellsCause(cause)) failure = failure + u"\n" + cause.GetText();
    return false;
}

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

EditOutcome EditStoredSession(ISessionConfig& config, VWindow* parent, VUnicodeString& failure,
                              const OthersSaver& saveOthers) {
    RemovedProtocols removed(config);
    {
        const FirstOptionsPage page;
        const bool isMulti = saveOthers != nullptr;
        if (!RunSessionOptions(config, isMulti ? kPageModeSeveral : kPageModeOne, isMulti, false, parent))
            return EditOutcome::kGivenUp;
    }
    const bool isChanged = removed.Find(config) || config.IsChanged();
    const auto change = [&](ISessionConfig& other) {
        other.CopyChangesFrom(&config);
        removed.RemoveFrom(other);
    };
    const auto save = [&] { return (!saveOthers || saveOthers(change)) && SaveSession(config); };
    return !isChanged || SaveAsOneUnit(save, failure) ? EditOutcome::kSaved : EditOutcome::kRefused;
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
