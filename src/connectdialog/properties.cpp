// The options of new and of stored sessions, as the dialog asks for them.
#include "connectdialog/connectdialogbase.h"
#include "connectdialog/newsession.h"
#include "connectdialog/quietselection.h"
#include "foundation/vreportmessageparams.h"
#include "imports/configpanels.h"
#include "imports/dialogkit/idialogkit.h"
#include "sessiondb/sessionpaths.h"
#include "sessiondb/sessiontree.h"
#include "wizard/newsessionwizard.h"

namespace connectdialog {

namespace {

constexpr std::uint32_t kManySessionsMessage = 0x61090002;
constexpr int kNoticePicture = 1;
constexpr unsigned kNoHelp = 0xFFFFFFFF;

}  // namespace

bool ConnectDialogBase::RunNewSessionWizard(ISessionConfig& config, std::int64_t& result, bool& useWizard) {
    return LaunchNewSessionWizard(config, this, result, useWizard);
}

bool ConnectDialogBase::ConfirmManyProperties(std::uint64_t count) {
    FirstOptionsPage page;
    const VRef<GlobalConfig> global = FetchGlobalConfig();
    VProfile<int>& suppress = global->suppressMultiEditWarning;
    if (suppress.Get() != 0) return true;
    VReportMessageParams report(kManySessionsMessage);
    VUnicodeString inserted;
    inserted.Format(u"%1!d!", count);
    report.AddInsert(inserted.GetData());
    if (ShowOptionalMessageBox(this, report.GetText(), VUnicodeString(), suppress, u"OK"_v, false, kNoticePicture,
                               kNoHelp) == 1)
        return true;
    page.Keep();
    return false;
}

void ConnectDialogBase::EditProperties() {
    const VArray<TreeItem> list = CollectSelection(Collect::kSessionsInSelection);
    if (list.IsEmpty()) return;
    const VRef<ISessionConfig> config = GetItemConfig(list[0]);
    if (!config) return ShowFailure(u"Unable to load the session configuration.");
    const bool isMulti = list.GetCount() > 1;
    if (isMulti && !ConfirmManyProperties(list.GetCount())) return;
    const auto saveOthers = [&](const SessionChange& change) {
        for (const TreeItem item : list) {
            if (item == list[0]) continue;
            const VRef<ISessionConfig> other = GetItemConfig(item);
            if (!other) continue;
            change(*other);
            if (!SaveSession(*other)) return false;
        }
        return true;
    };
    VUnicodeString failure = u"ERROR: Could not save the session in the database."_v;
    switch (EditStoredSession(*config, this, failure, isMulti ? OthersSaver(saveOthers) : nullptr)) {
        case EditOutcome::kGivenUp:
            return;
        case EditOutcome::kRefused:
            // What they hold in memory is not what is stored: they are read again when they are needed.
            for (const TreeItem item : list) GetItemData(item)->config = nullptr;
            return ShowFailure(failure.GetData());
        case EditOutcome::kSaved:
            break;
    }
    const QuietSelection quiet(*this);
    OnSelectionChanged();
    const VUnicodeString path = GetItemPath(list[0]);
    if (config->GetName() != GetEntryLeaf(path)) ShowRenamed(list[0], path, *config);
}

void ConnectDialogBase::ShowRenamed(TreeItem item, const VUnicodeString& path, ISessionConfig& config) {
    const VUnicodeString newName = config.GetName();
    const VUnicodeString parentPath = GetEntryParent(path);
    if (!ValidateSessionName(path, GetEntryLeaf(path), newName, false, this)) return config.SetName(GetEntryLeaf(path));
    const TreeItem parent = GetParentItem(item);
    const bool isManual = arrangement == SessionArrangement::kManual;
    if (!isManual) PositionSessionSorted(parent, newName);
    if (!RenameStored(path, newName)) {
        config.SetName(GetEntryLeaf(path));
        return ShowRenameFailure(path, newName);
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
