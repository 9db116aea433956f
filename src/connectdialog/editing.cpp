// New sessions and folders, renaming, properties, deleting.
#include <array>
#include <utility>
#include <vector>

#include "config/protocolchoice.h"
#include "connectdialog/connectdialogbase.h"
#include "connectdialog/quietselection.h"
#include "foundation/vreportmessageparams.h"
#include "imports/configpanels.h"
#include "imports/dialogkit/idialogkit.h"
#include "imports/dialogkit/vmessagebox.h"
#include "imports/hostcallbacks.h"
#include "platform/lasterror.h"
#include "profile/vprofilekey.h"
#include "sessiondb/entryoperations.h"
#include "sessiondb/entryrefusals.h"
#include "sessiondb/sessiontree.h"
#include "sessiondb/treesteps.h"
#include "wizard/newsessionwizard.h"

namespace connectdialog {

namespace {

constexpr std::uint32_t kManySessionsMessage = 0x61090002;
constexpr int kPageModeOne = 0;
constexpr int kPageModeSeveral = 4;
constexpr int kNoticePicture = 1;
constexpr unsigned kNoHelp = 0xFFFFFFFF;

/// The page of the options dialog that is shown first, for as long as it lives.
class FirstOptionsPage {
  public:
    FirstOptionsPage() : global(FetchGlobalConfig()), former(global->optionsPagePath.Get()) {
        global->optionsPagePath.Set(u"Connection+"_v);
    }
    ~FirstOptionsPage() {
        if (isRestored) global->optionsPagePath.Set(former);
    }
    FirstOptionsPage(const FirstOptionsPage&) = delete;
    FirstOptionsPage& operator=(const FirstOptionsPage&) = delete;
    void Keep() { isRestored = false; }

  private:
    VRef<GlobalConfig> global;
    VUnicodeString former;
    bool isRestored = true;
};

bool RunOptions(ISessionConfig& config, int pageMode, bool multiEdit, bool isNew, VWindow* parent) {
    const SessionOptionsFunction options = GetHostCallbacks().sessionOptions;
    return options != nullptr && options(&config, pageMode, multiEdit, isNew, parent) == kDialogAccepted;
}

/// That a side is to have no protocol any more is no change that a session tells, and none that is copied.
class ProtocolsTaken {
  public:
    explicit ProtocolsTaken(const ISessionConfig& config) : before(NamesOf(config)) {}

    /// Finds out what the user took since then.
    bool Find(const ISessionConfig& config) {
        const Names after = NamesOf(config);
        for (std::size_t side = 0; side < after.size(); ++side)
            isTaken[side] = after[side].View() == kNoProtocol && before[side] != after[side];
        return isTaken[0] || isTaken[1];
    }
    void TakeFrom(ISessionConfig& other) const {
        if (isTaken[0]) SelectProtocol(other, ProtocolSide::kTerminal, kNoProtocol);
        if (isTaken[1]) SelectProtocol(other, ProtocolSide::kTransfer, kNoProtocol);
    }

  private:
    using Names = std::array<VUnicodeString, 2>;
    static Names NamesOf(const ISessionConfig& config) {
        Names names;
        config.GetProtocolName(names[0]);
        config.GetTransferProtocolName(names[1]);
        return names;
    }

    Names before;
    std::array<bool, 2> isTaken{};
};

/// Appends to `failure` why the store refused, when it tells.
bool SaveAsOneUnit(const std::function<bool()>& save, VUnicodeString& failure) {
    const VWaitCursor wait;
    VProfileStore store(false);  // round the unit, to be told its cause
    bool isSaved = store.JoinUnitOfWork();
    if (isSaved) {
        isSaved = AsOneUnit(save);
        isSaved = store.Close() && isSaved;
    }
    VReportMessageParams& cause = *store.GetLastReport();
    const bool isTold = cause.GetCode() != platform::kSuccess && cause.GetCode() != platform::kCancelled;
    if (!isSaved && isTold) failure = failure + u"\n" + cause.GetText();
    return isSaved;
}

}  // namespace

TreeItem ConnectDialogBase::GetTargetFolder() {
    const VArray<TreeItem> items = CollectSelection(Collect::kSelectedItems);
    return items.IsEmpty() ? GetRootItem() : GetFolderOf(items[0]);
}

void ConnectDialogBase::NewFolder() {
    if (editingLabel) return;  // a name that was refused waits for its user
    const TreeItem target = GetTargetFolder();
    ClearSelection();
    PositionBehindLastFolder(target);
    const VUnicodeString path = GetItemPath(target);
    const VUnicodeString name = MakeUniqueName(path, u"New Folder"_v);
    // The database gets it when the name is final.
    const TreeItem item = AddFolderItem(target, name, insertMode, insertAfter);
    SelectItem(item);
    freshFolder = true;
    freshItem = item;
    EditLabel(item);
}

bool ConnectDialogBase::RunNewSessionWizard(ISessionConfig& config, std::int64_t& result, bool& useWizard) {
    return LaunchNewSessionWizard(config, this, result, useWizard);
}

/// False when the user gave up.
bool ConnectDialogBase::EditNewSession(ISessionConfig& config) {
    const FirstOptionsPage page;
    const VRef<GlobalConfig> global = FetchGlobalConfig();
    VProfile<bool>& useWizard = global->useNewSessionWizard;
    std::int64_t result = kDialogCancelled;
    bool wantsWizard = true;
    if (useWizard.Get() && RunNewSessionWizard(config, result, wantsWizard)) {
        if (result != VWizardSheet::kFinished) return false;
        useWizard.Set(wantsWizard);
        if (wantsWizard) return true;
    }
    return RunOptions(config, kPageModeOne, false, true, this);
}

void ConnectDialogBase::NewSession() {
    if (editingLabel) return;
    const TreeItem target = GetTargetFolder();
    const VRef<ISessionConfig> config = OpenSession(u"Default"_v);
    if (!config) return ShowFailure(u"Unable to load the session configuration.");
    ClearSelection();
    const VUnicodeString path = GetItemPath(target);
    const VUnicodeString name = MakeUniqueName(path, u"New"_v);
    config->SetPath(path);
    config->SetName(name);
    if (EditNewSession(*config)) StoreNewSession(target, *config, name);
}

void ConnectDialogBase::StoreNewSession(TreeItem target, ISessionConfig& config, const VUnicodeString& offeredName) {
    const VUnicodeString path = GetItemPath(target);
    // Whatever dialog was used, a name that cannot stand costs the name and not the session.
    if (!ValidateSessionName(path, offeredName, config.GetName(), true, this))
        config.SetName(MakeUniqueName(path, offeredName));
    const VUnicodeString name = config.GetName();
    const QuietSelection quiet(*this);
    SetItemHasChildren(target);
    ExpandItem(target);
    if (arrangement == SessionArrangement::kManual)
        PositionAtEnd();
    else
        PositionSessionSorted(target, name);
    if (!StoreSessionEntry(path, name, config, referenceName, true)) {
        ShowFailure(u"ERROR: Could not save the session in the database.");
        return SelectItem(target);
    }
    const bool isShown = GetItemData(target)->sessionsLoaded;
    const TreeItem item = isShown ? AddSessionItem(target, name, insertMode, insertAfter) : TreeItem::kNone;
    SelectItem(item != TreeItem::kNone ? item : target);
    RedrawTree();
}

void ConnectDialogBase::BeginRename() {
    const VArray<TreeItem> items = CollectSelection(Collect::kSelectedItems);
    if (items.GetCount() != 1) return;
    ClearSelection();
    SetItemSelected(items[0], true);
    if (items[0] != GetRootItem()) EditLabel(items[0]);
}

bool ConnectDialogBase::BeginLabelEdit(TreeItem item) {
    editingLabel = item != GetRootItem();
    return editingLabel;
}

void ConnectDialogBase::EndLabelEdit(TreeItem item, const VUnicodeString* text) {
    editingLabel = false;
    if (freshFolder && !IsValidItem(freshItem)) freshFolder = false;
    if (!IsValidItem(item)) return;
    const bool isFresh = freshFolder && item == freshItem;
    if (text == nullptr && !isFresh) return;
    // A new folder whose naming is given up keeps the name that was offered.
    VUnicodeString newName = text != nullptr ? *text : GetItemText(item);
    newName.TrimLeft();
    newName.TrimRight();
    const VUnicodeString path = GetItemPath(item);
    const VUnicodeString oldName = GetEntryLeaf(path);
    if (newName == oldName && !isFresh) return;
    if (!ValidateSessionName(path, oldName, newName, false, this)) {
        SetItemText(item, oldName);
        return EditLabel(item);
    }
    const QuietSelection quiet(*this);
    if (isFresh)
        FinishFreshFolder(item, newName);
    else
        RenameItem(item, path, newName);
}

void ConnectDialogBase::FinishFreshFolder(TreeItem item, const VUnicodeString& wanted) {
    freshFolder = false;
    const TreeItem parent = GetParentItem(item);
    // Somebody else may have taken the name that was offered.
    const VUnicodeString name = MakeUniqueName(GetItemPath(parent), wanted);
    if (arrangement == SessionArrangement::kManual)
        PositionBehindLastFolder(parent);
    else
        PositionFolderSorted(parent, name);
    if (!AddFolderEntry(GetItemPath(parent), name, referenceName, true)) {
        ShowFailure(u"ERROR: Could not create the folder in the database.");
        SelectItem(parent);
        return DeleteItem(item);
    }
    const TreeItem made = AddFolderItem(parent, name, insertMode, insertAfter);
    DeleteItem(item);
    SelectItem(made);
    RedrawTree();
}

/// The tree gets a new item in place of the old one, since what lies below a folder has another path now.
void ConnectDialogBase::RenameItem(TreeItem item, const VUnicodeString& path, const VUnicodeString& newName) {
    const VWaitCursor wait;
    const bool isFolder = IsFolderItem(item);
    const TreeItem parent = GetParentItem(item);
    if (arrangement == SessionArrangement::kManual)
        PositionBefore(item, !isFolder);
    else if (isFolder)
        PositionFolderSorted(parent, newName);
    else
        PositionSessionSorted(parent, newName);
    if (isFolder) SaveExpansion(GetRootItem());
    const bool isRenamed = arrangement == SessionArrangement::kManual ? RenameInPlace(path, newName)
                                                                      : RenameEntry(path, newName, referenceName);
    if (!isRenamed) {
        SetItemText(item, GetEntryLeaf(path));
        return ShowFailure(u"ERROR: Could not rename the item in the database.");
    }
    const TreeItem renamed = isFolder ? AddFolderItemAndChildren(parent, newName, insertMode, insertAfter)
                                      : AddSessionItem(parent, newName, insertMode, insertAfter);
    ReplaceItem(item, renamed);
    SelectItem(renamed);
    RedrawTree();
    if (isFolder) ReapplyExpansion(GetRootItem());
}

void ConnectDialogBase::EditProperties() {
    const VArray<TreeItem> list = CollectSelection(Collect::kSessionsInSelection);
    if (list.IsEmpty()) return;
    const VRef<ISessionConfig> config = GetItemConfig(list[0]);
    if (!config) return ShowFailure(u"Unable to load the session configuration.");
    const bool isMulti = list.GetCount() > 1;
    ProtocolsTaken taken(*config);
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
        if (!RunOptions(*config, isMulti ? kPageModeSeveral : kPageModeOne, isMulti, false, this)) return;
    }
    const bool isChanged = taken.Find(*config) || config->IsChanged();
    const auto edit = [&](ISessionConfig& other) {
        other.CopyChangesFrom(config.Get());
        taken.TakeFrom(other);
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
    const bool isRenamed = arrangement == SessionArrangement::kManual ? RenameInPlace(path, newName)
                                                                      : RenameEntry(path, newName, referenceName);
    if (!isRenamed) {
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

bool ConnectDialogBase::IsPlaceholder(TreeItem item) {
    return freshFolder && item == freshItem && !SessionKeyExists(GetItemPath(item));
}

void ConnectDialogBase::RemovePlaceholder(TreeItem item) {
    freshFolder = false;  // before the edit of its label ends, which would create it
    RemoveItem(item);
}

/// With what refers to it.
void ConnectDialogBase::RemoveItem(TreeItem item) {
    if (findCurrent != TreeItem::kNone && IsInside(findCurrent, item)) findCurrent = GetItemAfterRemoval(item);
    DeleteItem(item);
}

/// The search goes on at the item that an item was made anew as.
void ConnectDialogBase::ReplaceItem(TreeItem item, TreeItem replacement) {
    if (findCurrent != TreeItem::kNone && IsInside(findCurrent, item)) findCurrent = replacement;
    DeleteItem(item);
}

bool ConnectDialogBase::CheckInUse(const VArray<TreeItem>& items) {
    const RunningSessions running = AskRunningSessions();
    if (running.isBusy) {
        VMessageBox(this, VUnicodeString(kRunningSessionsBusy), kBoxWarning);
        return false;
    }
    if (const VUnicodeString unheard = DescribeUnheardHosts(running); !unheard.IsEmpty())
        VMessageBox(this, unheard, kBoxWarning);
    std::vector<VUnicodeString> paths;
    for (const TreeItem item : items) paths.push_back(GetItemPath(item));
    const VUnicodeString inUse = ListEntriesInUse(paths, running.paths);
    if (!inUse.IsEmpty()) VMessageBox(this, DescribeEntriesInUse(inUse), kBoxError);
    return inUse.IsEmpty();
}

RunningSessions ConnectDialogBase::AskRunningSessions() {
    const VWaitCursor wait;
    return GetRunningSessionPaths();
}

void ConnectDialogBase::DeleteSelection() {
    const VArray<TreeItem> items = CollectSelection(Collect::kSelectedForDelete);
    if (items.IsEmpty() || !CheckInUse(items)) return;
    if (VMessageBox(this, u"确定删除选中项？"_v, kBoxYesNo | kBoxWarning) != kAnswerYes) return;
    const QuietSelection quiet(*this);
    const VWaitCursor wait;
    std::vector<VUnicodeString> paths;
    std::vector<TreeItem> stored;
    TreeItem next = GetRootItem();
    for (const TreeItem item : items) {
        if (item == GetRootItem() || !IsValidItem(item)) continue;
        if (IsPlaceholder(item)) {
            next = GetItemAfterRemoval(item);
            RemovePlaceholder(item);
            continue;
        }
        paths.push_back(GetItemPath(item));
        stored.push_back(item);
    }
    const std::size_t deleted = paths.empty() ? 0 : DeleteEntries(paths);
    for (std::size_t i = 0; i < deleted; ++i) {
        next = GetItemAfterRemoval(stored[i]);
        RemoveItem(stored[i]);
    }
    if (deleted < paths.size()) ShowFailure(kDeletionFailed);
    if (deleted > 0 || paths.empty()) SelectItem(next);
}

}  // namespace connectdialog
