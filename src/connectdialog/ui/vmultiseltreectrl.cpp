#include "connectdialog/ui/vmultiseltreectrl.h"

#include "resources/accelerators.h"

namespace connectdialog {

namespace {
bool Has(KeyModifiers modifiers, Accelerator::Modifier modifier) {
    return (modifiers & modifier) != 0;
}
}  // namespace

bool VMultiSelTreeCtrl::Attach(IDialogWindow& window, int id) {
    view = window.AttachTree(id, items, *this);
    return view != nullptr;
}

TreeItem VMultiSelTreeCtrl::ItemFromPoint(VPoint point) const {
    if (view == nullptr) return TreeItem::kNone;
    const TreeHit hit = view->HitTest(point);
    return hit.part == TreePart::kIcon || hit.part == TreePart::kLabel ? hit.item : TreeItem::kNone;
}

void VMultiSelTreeCtrl::MakeOnlySelected(TreeItem item) {
    items.ClearSelection();
    items.SetCaret(item);
    items.SetState(item, kTreeSelected, true);
}

void VMultiSelTreeCtrl::Reveal(TreeItem item) {
    for (TreeItem above = items.GetParent(item); above != TreeItem::kNone; above = items.GetParent(above))
        SetExpanded(above, true);
    if (view != nullptr && item != TreeItem::kNone) view->EnsureVisible(item);
}

void VMultiSelTreeCtrl::SelectItem(TreeItem item) {
    if (!items.IsValid(item)) item = TreeItem::kNone;
    anchor = item;
    Reveal(item);
    MakeOnlySelected(item);
    owner.OnTreeSelectionChanged();
}

void VMultiSelTreeCtrl::SetExpanded(TreeItem item, bool isExpanded) {
    if (!items.IsValid(item) || items.HasState(item, kTreeExpanded) == isExpanded) return;
    if (isExpanded) {
        if (!items.HasState(item, kTreeExpandedOnce)) owner.OnTreeExpanding(item);
        items.SetState(item, kTreeExpanded, true);
        return;
    }
    items.SetState(item, kTreeExpanded, false);
    for (const TreeItem hidden : items.GetSelected())
        if (hidden != item && items.IsInside(hidden, item)) items.SetState(hidden, kTreeSelected, false);
    const TreeItem caret = items.GetCaret();
    if (caret == item || !items.IsInside(caret, item)) return;
    items.SetCaret(item);
    items.SetState(item, kTreeSelected, true);
    owner.OnTreeSelectionChanged();
}

void VMultiSelTreeCtrl::OnMouseDown(MouseButton button, VPoint point, KeyModifiers modifiers) {
    if (button == MouseButton::kLeft)
        ClickLeft(point, modifiers);
    else
        ClickRight(point);
}

void VMultiSelTreeCtrl::ClickLeft(VPoint point, KeyModifiers modifiers) {
    const TreeHit place = view->HitTest(point);
    if (place.part == TreePart::kExpander) return SetExpanded(place.item, !items.HasState(place.item, kTreeExpanded));
    const TreeItem hit = ItemFromPoint(point);
    if (hit == TreeItem::kNone) return;
    if (Has(modifiers, Accelerator::kShift)) {
        if (!items.IsValid(anchor)) anchor = items.GetCaret() != TreeItem::kNone ? items.GetCaret() : hit;
        items.SetCaret(hit);
        SelectRange(anchor, hit, Has(modifiers, Accelerator::kControl));
    } else {
        anchor = TreeItem::kNone;
        if (Has(modifiers, Accelerator::kControl))
            ToggleOne(hit);
        else
            MakeOnlySelected(hit);
    }
    owner.OnTreeSelectionChanged();
}

void VMultiSelTreeCtrl::ToggleOne(TreeItem item) {
    items.SetCaret(item);
    items.SetState(item, kTreeSelected, !items.HasState(item, kTreeSelected));
}

void VMultiSelTreeCtrl::ClickRight(VPoint point) {
    const TreeItem hit = ItemFromPoint(point);
    if (hit != TreeItem::kNone && !items.HasState(hit, kTreeSelected)) {
        MakeOnlySelected(hit);
        owner.OnTreeSelectionChanged();
    }
    owner.OnTreeContextMenu(point);
}

void VMultiSelTreeCtrl::SelectRange(TreeItem first, TreeItem last, bool keepOthers) {
    if (!keepOthers) items.ClearSelection();
    bool isOpen = false;
    for (TreeItem item = items.GetFirstChild(TreeItem::kNone); item != TreeItem::kNone;
         item = items.GetNextVisible(item)) {
        const bool isEnd = item == first || item == last;
        if (isOpen || isEnd) items.SetState(item, kTreeSelected, true);
        if (isEnd && (isOpen || first == last)) return;
        isOpen = isOpen || isEnd;
    }
}

void VMultiSelTreeCtrl::OnDoubleClick(VPoint point) {
    const TreeItem hit = ItemFromPoint(point);
    if (items.HasChildrenOrExpander(hit)) SetExpanded(hit, !items.HasState(hit, kTreeExpanded));
    owner.OnDoubleClick(point);
}

TreeItem VMultiSelTreeCtrl::FollowKey(std::uint16_t key) {
    const TreeItem caret = items.GetCaret();
    const bool isExpanded = items.HasState(caret, kTreeExpanded);
    TreeItem target = caret;
    switch (key) {
        case kKeyUp:
            target = items.GetPreviousVisible(caret);
            break;
        case kKeyDown:
            target = items.GetNextVisible(caret);
            break;
        case kKeyLeft:
            if (!isExpanded) target = items.GetParent(caret);
            SetExpanded(caret, false);
            break;
        case kKeyRight:
            if (isExpanded) target = items.GetFirstChild(caret);
            if (items.HasChildrenOrExpander(caret)) SetExpanded(caret, true);
            break;
        default:
            break;
    }
    return target != TreeItem::kNone ? target : caret;
}

void VMultiSelTreeCtrl::OnKeyDown(std::uint16_t key, KeyModifiers modifiers) {
    if (!items.IsValid(anchor)) anchor = items.GetCaret();
    const TreeItem former = items.GetCaret();
    const TreeItem target = FollowKey(key);
    const bool isRange = Has(modifiers, Accelerator::kShift) && (key == kKeyUp || key == kKeyDown);
    if (target != former) {
        if (view != nullptr) view->EnsureVisible(target);
        items.SetCaret(target);
        if (isRange) {
            SelectRange(anchor, target, false);
        } else {
            MakeOnlySelected(target);
            anchor = TreeItem::kNone;
        }
        owner.OnTreeSelectionChanged();
    }
    owner.OnKeyDown(key, modifiers);
}

DropEffect VMultiSelTreeCtrl::OnDragEnter(const VDragData& data, VPoint point, KeyModifiers modifiers) {
    return owner.OnDragEnter(data, point, modifiers);
}
DropEffect VMultiSelTreeCtrl::OnDragOver(const VDragData& data, VPoint point, KeyModifiers modifiers) {
    return owner.OnDragOver(data, point, modifiers);
}
bool VMultiSelTreeCtrl::OnDrop(const VDragData& data, VPoint point, DropEffect effect) {
    return owner.OnDrop(data, point, effect);
}

}  // namespace connectdialog
