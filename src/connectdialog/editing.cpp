// New sessions and folders, renaming, deleting.
#include <vector>

#include "connectdialog/connectdialogbase.h"
#include "connectdialog/newsession.h"
#include "connectdialog/quietselection.h"
#include "imports/configpanels.h"
#include "imports/dialogkit/idialogkit.h"
#include "imports/dialogkit/vmessagebox.h"
#include "profile/unitofwork.h"
#include "sessiondb/entryoperations.h"
#include "sessiondb/entryrefusals.h"
#include "sessiondb/sessionpaths.h"
#include "sessiondb/sessiontree.h"

namespace connectdialog {

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

void ConnectDialogBase::NewSession() {
    if (editingLabel) return;
    const TreeItem target = GetTargetFolder();
    const VRef<ISessionConfig> config = PrepareNewSession(GetItemPath(target));
    if (!config) return ShowFailure(u"Unable to load the session configuration.");
    ClearSelection();
    const auto wizard = [this](ISessionConfig& session, VWindow*, std::int64_t& result, bool& useWizard) {
        return RunNewSessionWizard(session, result, useWizard);
    };
    if (EditNewSession(*config, this, wizard)) StoreNewSession(target, *config);
}

void ConnectDialogBase::StoreNewSession(TreeItem target, ISessionConfig& config) {
    const QuietSelection quiet(*this);
    SetItemHasChildren(target);
    ExpandItem(target);
    if (!StoreUnderFreeName(GetItemPath(target), config)) {
        ShowFailure(u"ERROR: Could not save the session in the database.");
        return SelectItem(target);
    }
    if (arrangement == SessionArrangement::kManual)
        PositionAtEnd();
    else
        PositionSessionSorted(target, config.GetName());
    const bool isShown = GetItemData(target)->sessionsLoaded;
    const TreeItem item = isShown ? AddSessionItem(target, config.GetName(), insertMode, insertAfter) : TreeItem::kNone;
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
    VUnicodeString name;
    const auto store = [&] {
        // Somebody else may have taken the name that was offered.
        name = MakeUniqueName(GetItemPath(parent), wanted);
        if (arrangement == SessionArrangement::kManual)
            PositionBehindLastFolder(parent);
        else
            PositionFolderSorted(parent, name);
        return AddFolderEntry(GetItemPath(parent), name, referenceName, true);
    };
    if (!AsOneUnit(store)) {
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
    if (!RenameStored(path, newName)) {
        SetItemText(item, GetEntryLeaf(path));
        return ShowRenameFailure(path, newName);
    }
    const TreeItem renamed = isFolder ? AddFolderItemAndChildren(parent, newName, insertMode, insertAfter)
                                      : AddSessionItem(parent, newName, insertMode, insertAfter);
    ReplaceItem(item, renamed);
    SelectItem(renamed);
    RedrawTree();
    if (isFolder) ReapplyExpansion(GetRootItem());
}

bool ConnectDialogBase::RenameStored(const VUnicodeString& path, const VUnicodeString& newName) {
    return arrangement == SessionArrangement::kManual ? RenameInPlace(path, newName)
                                                      : RenameToFreeName(path, newName, referenceName);
}

/// The name may have been taken since it was asked for, which the user is told in the words of that question.
void ConnectDialogBase::ShowRenameFailure(const VUnicodeString& path, const VUnicodeString& newName) {
    if (ValidateSessionName(path, GetEntryLeaf(path), newName, false, this))
        ShowFailure(u"ERROR: Could not rename the item in the database.");
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
