// New sessions and folders, renaming, properties, deleting.
#include <utility>
#include <vector>

#include "connectdialog/connectdialogbase.h"
#include "connectdialog/quietselection.h"
#include "foundation/vreportmessageparams.h"
#include "imports/configpanels.h"
#include "imports/dialogkit/idialogkit.h"
#include "imports/dialogkit/vmessagebox.h"
#include "imports/hostcallbacks.h"
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

void ConnectDialogBase::FinishFreshFolder(TreeItem item, const VUnicodeString& name) {
    freshFolder = false;
    const TreeItem parent = GetParentItem(item);
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
    if (isFolder) SaveExpansion();
    if (!RenameStored(item, path, newName)) {
        SetItemText(item, GetEntryLeaf(path));
        return ShowFailure(u"ERROR: Could not rename the item in the database.");
    }
    const TreeItem renamed = isFolder ? AddFolderItemAndChildren(parent, newName, insertMode, insertAfter)
                                      : AddSessionItem(parent, newName, insertMode, insertAfter);
    DeleteItem(item);
    SelectItem(renamed);
    RedrawTree();
    if (isFolder) ReapplyExpansion(GetRootItem());
}

bool ConnectDialogBase::RenameStored(TreeItem item, const VUnicodeString& path, const VUnicodeString& newName) {
    // The first of its kind has no neighbour before it, and its own name may be gone once it has the new one: the one
    // behind it says where it goes.
    TreeItem next = item;
    const bool isFirst = arrangement == SessionArrangement::kManual && referenceName == GetEntryLeaf(path);
    if (!isFirst || GetNextSiblingItem(next) == TreeItem::kNone) return RenameEntry(path, newName, referenceName);
    const VUnicodeString newPath = JoinEntryPath(GetEntryParent(path), newName);
    return AsOneUnit([&] {
        return RenameEntry(path, newName, referenceName) && !ArrangeEntry(newPath, GetItemText(next), false).IsEmpty();
    });
}

void ConnectDialogBase::EditProperties() {
    const VArray<TreeItem> list = CollectSelection(Collect::kSessionsInSelection);
    if (list.IsEmpty()) return;
    const VRef<ISessionConfig> config = GetItemConfig(list[0]);
    if (!config) return ShowFailure(u"Unable to load the session configuration.");
    const bool isMulti = list.GetCount() > 1;
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
    if (config->IsChanged() && !SaveEdited(list, *config)) return;
    const QuietSelection quiet(*this);
    OnSelectionChanged();
    const VUnicodeString path = GetItemPath(list[0]);
    if (config->GetName() != GetEntryLeaf(path)) ShowRenamed(list[0], path, *config);
}

/// One unit of work: all of the sessions are changed, or none.
bool ConnectDialogBase::SaveEdited(const VArray<TreeItem>& list, ISessionConfig& config) {
    const VWaitCursor wait;
    const bool isSaved = AsOneUnit([&] {
        for (const TreeItem item : list) {
            if (item == list[0]) continue;
            const VRef<ISessionConfig> other = GetItemConfig(item);
            if (!other) continue;
            other->CopyChangesFrom(&config);
            if (!SaveSession(*other)) return false;
        }
        return SaveSession(config);
    });
    if (isSaved) return true;
    // What they hold in memory is not what is stored: they are read again when they are needed.
    for (const TreeItem item : list) GetItemData(item)->config = nullptr;
    ShowFailure(u"ERROR: Could not save the session in the database.");
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
    if (!RenameStored(item, path, newName)) {
        config.SetName(GetEntryLeaf(path));
        return ShowFailure(u"ERROR: Could not rename the item in the database.");
    }
    config.SetPath(JoinEntryPath(parentPath, newName));
    if (isManual) {
        SetItemText(item, newName);
        return SelectItem(item);
    }
    const TreeItem renamed = AddSessionItem(parent, newName, insertMode, insertAfter);
    DeleteItem(item);
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

bool ConnectDialogBase::CheckInUse(const VArray<TreeItem>& items) {
    const RunningSessions running = AskRunningSessions();
    if (running.isBusy) {
        VMessageBox(this, VUnicodeString(kRunningSessionsBusy), kBoxWarning);
        return false;
    }
    if (running.silentHosts > 0) {
        VUnicodeString text;
        text.Format(u"Running applications that do not answer: %1!d!\nWhat they have open is not known.",
                    running.silentHosts);
        VMessageBox(this, text, kBoxWarning);
    }
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
