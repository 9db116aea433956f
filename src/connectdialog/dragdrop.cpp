// Dragging items within the tree.
#include "connectdialog/connectdialogbase.h"
#include "connectdialog/quietselection.h"

namespace connectdialog {

namespace {

/// How long a folder waits under a resting drag before it opens. With an order of the user's the pointer rests more
/// often without meaning that.
constexpr unsigned kHoverSorted = 750;
constexpr unsigned kHoverManual = 1000;
/// The edges of a row that mean before and behind it.
constexpr std::int32_t kZoneEdge = 3;
constexpr int kZoneBefore = 0;
constexpr int kZoneOn = 1;
constexpr int kZoneBehind = 2;

DropEffect EffectOf(KeyModifiers modifiers) {
    if ((modifiers & Accelerator::kShift) != 0) return DropEffect::kNone;
    return modifiers == Accelerator::kControl ? DropEffect::kCopy : DropEffect::kMove;
}

}  // namespace

bool ConnectDialogBase::BeginDragFromItem(TreeItem item, VDragData& data) {
    dragAccepted = IsValidItem(item) && item != GetRootItem() && !IsPlaceholder(item);
    if (!dragAccepted) return false;
    dragEffect = DropEffect::kNone;
    dragSourceItem = item;
    dragSourceIsFolder = IsFolderItem(item);
    SelectItem(item);
    dragHoverItem = item;
    const TreeTransferRecord record{item, GetItemPath(item), GetItemText(GetParentItem(item)), true};
    data = VDragData(kTreeTransferFormat, record.Pack());
    return true;
}

DropEffect ConnectDialogBase::OnDragEntered(const VDragData& data, VPoint point, KeyModifiers modifiers) {
    // A drag may come from outside; only an item of this tree can be told from garbage.
    const auto record = TreeTransferRecord::Unpack(data.GetBytes());
    const TreeItem source = data.HasFormat(kTreeTransferFormat) && record ? GetLiveSource(*record) : TreeItem::kNone;
    dragAccepted = source != TreeItem::kNone && DragEnter(point);
    if (!dragAccepted) return DropEffect::kNone;
    dragSourceItem = source;
    dragSourceIsFolder = IsFolderItem(source);
    return OnDraggedOver(point, modifiers);
}

DropEffect ConnectDialogBase::OnDraggedOver(VPoint point, KeyModifiers modifiers) {
    if (!dragAccepted || !IsValidItem(dragSourceItem)) return DropEffect::kNone;
    return arrangement == SessionArrangement::kManual ? DragOverManual(point, modifiers)
                                                      : DragOverSorted(point, modifiers);
}

bool ConnectDialogBase::IsDragSourceOrInside(TreeItem item) {
    return IsInside(item, dragSourceItem);
}

void ConnectDialogBase::StopHover() {
    if (hoverTimer != 0) StopHoverTimer(hoverTimer);
    hoverTimer = 0;
}

void ConnectDialogBase::ClearDropMarks() {
    if (IsValidItem(dragHoverItem)) SetItemDropHilite(dragHoverItem, false);
    SetInsertMark(TreeItem::kNone, false);
}

DropEffect ConnectDialogBase::DragOverSorted(VPoint point, KeyModifiers modifiers) {
    const TreeItem item = HitTest(point);
    if (item == TreeItem::kNone) return DropEffect::kNone;
    if (item == dragHoverItem) {
        DragMove(point);
        if (hoverTimer == 0) hoverTimer = StartHoverTimer(kHoverSorted);
        hoverPoint = point;
        return dragEffect;
    }
    DragLeave();
    StopHover();
    ClearDropMarks();
    SetItemDropHilite(item, true);
    dragHoverItem = item;
    DragEnter(point);
    const bool isRefused = dragSourceIsFolder && IsDragSourceOrInside(item);
    dragEffect = isRefused ? DropEffect::kNone : EffectOf(modifiers);
    return dragEffect;
}

int ConnectDialogBase::GetDropZone(TreeItem item, VPoint point) {
    VRectangle row;
    if (!GetItemRect(item, row)) return kZoneOn;
    if (point.y < row.top + kZoneEdge) return kZoneBefore;
    return point.y > row.bottom - kZoneEdge ? kZoneBehind : kZoneOn;
}

DropEffect ConnectDialogBase::DragOverManual(VPoint point, KeyModifiers modifiers) {
    const TreeItem item = HitTest(point);
    if (item == TreeItem::kNone) return DropEffect::kNone;
    const int zone = GetDropZone(item, point);
    const bool isSameItem = item == dragHoverItem;
    if (isSameItem) {
        if (hoverTimer == 0) hoverTimer = StartHoverTimer(kHoverManual);
        hoverPoint = point;
        if (zone == dragZone || (dragSourceIsFolder && !IsFolderItem(item))) {
            DragMove(point);
            return dragEffect;
        }
    }
    DragLeave();
    if (!isSameItem) StopHover();
    ClearDropMarks();
    const bool isRefused = !MarkManualTarget(item, zone);
    DragEnter(point);
    dragEffect = isRefused ? DropEffect::kNone : EffectOf(modifiers);
    dragHoverItem = item;
    dragZone = zone;
    return dragEffect;
}

/// Shows where a drop would go. False where it is refused.
bool ConnectDialogBase::MarkManualTarget(TreeItem item, int zone) {
    const bool isFolder = IsFolderItem(item);
    if (!dragSourceIsFolder) {
        if (isFolder)
            SetItemDropHilite(item, true);
        else
            SetInsertMark(item, zone == kZoneBehind);
        return true;
    }
    if (item != dragSourceItem && IsDragSourceOrInside(item)) {
        SetItemDropHilite(item, true);
        return false;
    }
    if (!isFolder) {
        // A folder goes to the end of the folders, whatever session it is dropped on.
        SetInsertMark(FirstSessionChild(GetParentItem(item)), false);
    } else if (zone != kZoneOn) {
        SetInsertMark(item, zone == kZoneBehind);
    } else {
        SetItemDropHilite(item, true);
        return item != dragSourceItem;
    }
    return true;
}

void ConnectDialogBase::OnHoverTimer() {
    StopHover();
    const TreeItem item = HitTest(hoverPoint);
    if (item == TreeItem::kNone) return;
    ExpandItem(item);
    RedrawTree();
}

void ConnectDialogBase::OnDragLeft() {
    StopHover();
    DragLeave();
    ClearDropMarks();
    dragHoverItem = TreeItem::kNone;
    dragAccepted = false;
}

bool ConnectDialogBase::OnDropped(const VDragData& data, VPoint point, DropEffect effect) {
    const bool wasAccepted = dragAccepted;
    OnDragLeft();
    const auto record = TreeTransferRecord::Unpack(data.GetBytes());
    const TreeItem source = wasAccepted && record ? GetLiveSource(*record) : TreeItem::kNone;
    const TreeItem target = HitTest(point);
    if (source == TreeItem::kNone || target == TreeItem::kNone || effect == DropEffect::kNone) return false;
    const QuietSelection quiet(*this);
    TreeItem destination = target;
    if (arrangement == SessionArrangement::kManual)
        destination = PositionForDrop(target, point);
    else if (dragSourceIsFolder)
        PositionFolderSorted(GetFolderOf(target), GetItemText(source));
    else
        PositionSessionSorted(GetFolderOf(target), GetItemText(source));
    const bool isDone = TransferNode(source, destination, effect != DropEffect::kCopy);
    insertBehindReference = true;
    if (isDone) SelectPasted(destination);
    OnSelectionChanged();
    return isDone;
}

/// Gives the item to drop on, or into whose folder.
TreeItem ConnectDialogBase::PositionForDrop(TreeItem target, VPoint point) {
    const int zone = GetDropZone(target, point);
    insertBehindReference = zone == kZoneBehind;
    const bool isFolder = IsFolderItem(target);
    const TreeItem parent = GetParentItem(target);
    if (!dragSourceIsFolder && isFolder) {
        PositionAtEnd();
        return target;
    }
    if (!dragSourceIsFolder) {
        if (insertBehindReference)
            PositionBehind(target);
        else
            PositionBefore(target, true);
        return target;
    }
    if (!isFolder || zone == kZoneOn) {
        insertBehindReference = true;
        PositionBehindLastFolder(isFolder ? target : parent);
        return isFolder ? target : parent;
    }
    if (parent == TreeItem::kNone) {
        PositionFirstInRoot();
        return target;
    }
    if (insertBehindReference)
        PositionBehind(target);
    else
        PositionBefore(target, false);
    return parent;
}

}  // namespace connectdialog
