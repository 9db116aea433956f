// The options of new and of stored sessions.
#include <functional>
#include <vector>

#include "config/protocolchoice.h"
#include "connectdialog/connectdialogbase.h"
#include "connectdialog/newsession.h"
#include "connectdialog/quietselection.h"
#include "foundation/vreportmessageparams.h"
#include "imports/configpanels.h"
#include "imports/dialogkit/idialogkit.h"
#include "profile/unitofwork.h"
#include "sessiondb/sessionpaths.h"
#include "sessiondb/sessiontree.h"
#include "wizard/newsessionwizard.h"

namespace connectdialog {

namespace {

constexpr std::uint32_t kManySessionsMessage = 0x61090002;
constexpr int kNoticePicture = 1;
constexpr unsigned kNoHelp = 0xFFFFFFFF;

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

}  // namespace

bool ConnectDialogBase::RunNewSessionWizard(ISessionConfig& config, std::int64_t& result, bool& useWizard) {
    return LaunchNewSessionWizard(config, this, result, useWizard);
}

void ConnectDialogBase::EditProperties() {
    const VArray<TreeItem> list = CollectSelection(Collect::kSessionsInSelection);
    if (list.IsEmpty()) return;
    const VRef<ISessionConfig> config = GetItemConfig(list[0]);
    if (!config) return ShowFailure(u"Unable to load the session configuration.");
    const bool isMulti = list.GetCount() > 1;
    RemovedProtocols removed(*config);
    {
        FirstOptionsPage page;
        const VRef<GlobalConfig> global = FetchGlobalConfig();
        VProfile<int>& suppress = global->suppressMultiEditWarning;
        if (isMulti && suppress.Get() == 0) {
            VReportMessageParams report(kManySessionsMessage);
            VUnicodeString count;
            count.Format(u"%1!d!", list.GetCount());
            report.AddInsert(count.GetData());
            if (ShowOptionalMessageBox(this, report.GetText(), VUnicodeString(), suppress, u"OK"_v, false,
                                       kNoticePicture, kNoHelp) != 1)
                return page.Keep();
        }
        if (!RunSessionOptions(*config, isMulti ? kPageModeSeveral : kPageModeOne, isMulti, false, this)) return;
    }
    const bool isChanged = removed.Find(*config) || config->IsChanged();
    const auto edit = [&](ISessionConfig& other) {
        other.CopyChangesFrom(config.Get());
        removed.RemoveFrom(other);
    };
    if (isChanged && !SaveEdited(list, *config, edit)) return;
    const QuietSelection quiet(*this);
    OnSelectionChanged();
    const VUnicodeString path = GetItemPath(list[0]);
    if (config->GetName() != GetEntryLeaf(path)) ShowRenamed(list[0], path, *config);
}

/// One unit of work: all of the sessions are changed, or none.
bool ConnectDialogBase::SaveEdited(const VArray<TreeItem>& list, ISessionConfig& config,
                                   const std::function<void(ISessionConfig&)>& edit) {
    VUnicodeString text = u"ERROR: Could not save the session in the database.";
    const bool isSaved = SaveAsOneUnit(
        [&] {
            for (const TreeItem item : list) {
                if (item == list[0]) continue;
                const VRef<ISessionConfig> other = GetItemConfig(item);
                if (!other) continue;
                edit(*other);
                if (!SaveSession(*other)) return false;
            }
            return SaveSession(config);
        },
        text);
    if (isSaved) return true;
    // What they hold in memory is not what is stored: they are read again when they are needed.
    for (const TreeItem item : list) GetItemData(item)->config = nullptr;
    ShowFailure(text.GetData());
    return false;
}

void ConnectDialogBase::ShowRenamed(TreeItem item, const VUnicodeString& path, ISessionConfig& config) {
    const VUnicodeString newName = config.GetName();
    const VUnicodeString parentPath = GetEntryParent(path);
    if (!ValidateSessionName(path, GetEntryLeaf(path), newName, false, this)) return config.SetName(GetEntryLeaf(path));
    const TreeItem parent = GetParentItem(item);
    const bool isManual = arrangement == SessionArrangement::kManual;
    if (isManual)
        PositionBefore(item, true);
    else
        PositionSessionSorted(parent, newName);
    if (!RenameStored(path, newName)) {
        config.SetName(GetEntryLeaf(path));
        return ShowFailure(u"ERROR: Could not rename the item in the database.");
    }
    config.SetPath(JoinEntryPath(parentPath, newName));
    if (isManual) {
        SetItemText(item, newName);
        return SelectItem(item);
    }
    const TreeItem renamed = AddSessionItem(parent, newName, insertMode, insertAfter);
    ReplaceItem(item, renamed);
    SelectItem(renamed);
}

}  // namespace connectdialog
