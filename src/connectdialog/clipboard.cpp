// Cut, copy and paste, and what paste and drop share: moving and copying items.
#include <utility>
#include <vector>

#include "connectdialog/connectdialogbase.h"
#include "connectdialog/quietselection.h"
#include "imports/dialogkit/idialogkit.h"
#include "imports/dialogkit/vmessagebox.h"
#include "sessiondb/entryoperations.h"
#include "sessiondb/entryrefusals.h"
#include "sessiondb/sessiontree.h"

namespace connectdialog {

void ConnectDialogBase::SetPasteAvailable(bool isAvailable) {
    pasteAvailable = isAvailable;
    PostPasteAvailable(isAvailable);
}

void ConnectDialogBase::ForgetCutItem() {
    const TreeItem item = std::exchange(cutItem, TreeItem::kNone);
    if (IsValidItem(item)) SetItemCutMark(item, false);
}

void ConnectDialogBase::PutOnClipboard(bool isCut) {
    const VArray<TreeItem> items = CollectSelection(Collect::kSelectedItems);
    if (items.GetCount() != 1 || items[0] == GetRootItem()) return;
    ForgetCutItem();
    const TreeTransferRecord record{items[0], GetItemPath(items[0]), GetItemParentPath(items[0]), isCut};
    IDialogKit* kit = GetDialogKit();
    if (kit == nullptr || !kit->SetClipboardData(kTreeTransferFormat, record.Pack()))
        return ShowFailure(u"ERROR: Unable to copy item to clipboard");
    if (isCut) {
        cutItem = items[0];
        SetItemCutMark(cutItem, true);
    }
    SetPasteAvailable(true);
}

bool ConnectDialogBase::ReadClipboard(TreeTransferRecord& record) {
    std::vector<std::byte> block;
    IDialogKit* kit = GetDialogKit();
    if (kit == nullptr || !kit->GetClipboardData(kTreeTransferFormat, block)) return false;
    const std::optional<TreeTransferRecord> read = TreeTransferRecord::Unpack(block);
    if (read) record = *read;
    return read.has_value();
}

/// The item that a record speaks of. The block may come from another process, and its handle may by chance be that of a
/// live item here: the path must be that item's too, as far as the record has room for it.
TreeItem ConnectDialogBase::GetLiveSource(const TreeTransferRecord& record) {
    if (!IsValidItem(record.sourceItem) || record.sourceItem == GetRootItem()) return TreeItem::kNone;
    const VUnicodeString path = GetItemPath(record.sourceItem);
    const bool isSame = path.Left(TreeTransferRecord::kTextLength) == record.sourcePath;
    return isSame && SessionKeyExists(path) ? record.sourceItem : TreeItem::kNone;
}

void ConnectDialogBase::PasteFromClipboard() {
    TreeTransferRecord record;
    if (!pasteAvailable || !ReadClipboard(record)) return;
    const TreeItem source = GetLiveSource(record);
    if (source == TreeItem::kNone) {
        VUnicodeString text;
        text.Format(u"Item '%1' is no longer available for pasting", GetEntryLeaf(record.sourcePath));
        VMessageBox(this, text, kBoxWarning);
        if (record.isCut) SetPasteAvailable(false);
        return;
    }
    const VArray<TreeItem> items = CollectSelection(Collect::kSelectedItems);
    if (items.IsEmpty()) return;
    const TreeItem target = items[0];
    if (record.isCut && source == target) {
        ForgetCutItem();
        return SetPasteAvailable(false);
    }
    const QuietSelection quiet(*this);
    PositionForPaste(source, target);
    const bool isDone = TransferNode(source, target, record.isCut);
    if (record.isCut) ForgetCutItem();
    if (isDone) SelectPasted(target);
    if (record.isCut) SetPasteAvailable(false);
    OnSelectionChanged();
}

void ConnectDialogBase::PositionForPaste(TreeItem source, TreeItem target) {
    const bool isFolder = IsFolderItem(source);
    const TreeItem folder = GetFolderOf(target);
    if (arrangement != SessionArrangement::kManual) {
        if (isFolder)
            PositionFolderSorted(folder, GetItemText(source));
        else
            PositionSessionSorted(folder, GetItemText(source));
    } else if (isFolder) {
        PositionBehindLastFolder(folder);
    } else if (IsFolderItem(target)) {
        PositionAtEnd();
    } else {
        PositionBehind(target);
    }
}

bool ConnectDialogBase::TransferNode(TreeItem source, TreeItem destination, bool isMove) {
    if (isMove && source == destination) return false;
    const TreeItem folder = GetFolderOf(destination);
    if (isMove && GetParentItem(source) == folder)
        return arrangement == SessionArrangement::kManual && ReorderInFolder(source, folder);
    const bool isDone = CopyNode(folder, source, isMove);
    if (isDone && isMove) RemoveItem(source);
    RedrawTree();
    return isDone;
}

bool ConnectDialogBase::ReorderInFolder(TreeItem source, TreeItem parent) {
    const VUnicodeString path = GetItemPath(source);
    const VUnicodeString leaf = GetItemText(source);
    // Beside itself it stands already; and the database would look for a neighbour that it has just taken away.
    if (referenceName == leaf) return false;
    const VWaitCursor wait;
    lastPastedPath = ArrangeEntry(path, referenceName, insertBehindReference);
    if (lastPastedPath.IsEmpty()) {
        ShowFailure(u"ERROR: Could not move the item in the database.");
        return false;
    }
    const bool isFolder = IsFolderItem(source);
    if (isFolder) SaveExpansion(source);
    const TreeItem moved = isFolder ? AddFolderItemAndChildren(parent, leaf, insertMode, insertAfter)
                                    : AddSessionItem(parent, leaf, insertMode, insertAfter);
    ReplaceItem(source, moved);
    if (isFolder) ReapplyExpansion(moved);
    return true;
}

/// Copies an entry, or moves it, and shows it in its new folder; the old item of a moved entry stays for the caller.
bool ConnectDialogBase::CopyNode(TreeItem folder, TreeItem source, bool isMove) {
    const VWaitCursor wait;
    const VUnicodeString sourcePath = GetItemPath(source);
    const VUnicodeString folderPath = GetItemPath(folder);
    const EntryRefusal refusal = CheckCopy(sourcePath, folderPath);
    if (refusal != EntryRefusal::kNone) {
        VMessageBox(this, DescribeEntryRefusal(refusal, sourcePath), kBoxWarning);
        return false;
    }
    const bool isFolder = IsFolderItem(source);
    const bool isTaken = SessionKeyExists(JoinEntryPath(folderPath, GetItemText(source)));
    if (isFolder) SaveExpansion(source);
    lastPastedPath =
        (isMove ? MoveEntry : CopyEntry)(sourcePath, folderPath, true, referenceName, insertBehindReference);
    if (lastPastedPath.IsEmpty()) {
        ShowFailure(u"ERROR: Could not copy the item in the database.");
        return false;
    }
    const VUnicodeString leaf = GetEntryLeaf(lastPastedPath);
    // A name that was taken gave way to another one, which sorts elsewhere.
    const bool sortsAnew = isTaken && arrangement != SessionArrangement::kManual;
    if (isFolder) {
        if (sortsAnew) PositionFolderSorted(folder, leaf);
        const TreeItem made = AddFolderItemAndChildren(folder, leaf, insertMode, insertAfter);
        ReapplyExpansion(made);
    } else if (GetItemData(folder)->sessionsLoaded) {
        if (sortsAnew) PositionSessionSorted(folder, leaf);
        if (AddSessionItem(folder, leaf, insertMode, insertAfter) == TreeItem::kNone) {
            ShowFailure(u"ERROR: Could not add a new session to the tree.");
            return false;
        }
    }
    SetItemHasChildren(folder);
    return true;
}

void ConnectDialogBase::SelectPasted(TreeItem item) {
    const VUnicodeString path = std::exchange(lastPastedPath, VUnicodeString());
    if (path.IsEmpty()) return SelectItem(GetRootItem());
    const TreeItem folder = GetFolderOf(item);
    ExpandItem(folder);
    const TreeItem pasted = FindChild(folder, GetEntryLeaf(path));
    if (pasted != TreeItem::kNone) SelectItem(pasted);
}

}  // namespace connectdialog
