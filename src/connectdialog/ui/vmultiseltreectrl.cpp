#include "connectdialog/ui/vmultiseltreectrl.h"

#include <algorithm>
#include <cstdlib>

#include "resources/accelerators.h"

namespace connectdialog {

namespace {

/// A second click that comes later than this is no double click.
constexpr unsigned kDoubleClickMilliseconds = 500;
/// What is typed later than this begins a new text.
constexpr unsigned kTypingMilliseconds = 1000;

bool Has(KeyModifiers modifiers, Accelerator::Modifier modifier) {
    return (modifiers & modifier) != 0;
}

bool IsVertical(std::uint16_t key) {
    return key == kKeyUp || key == kKeyDown || key == kKeyHome || key == kKeyEnd || key == kKeyPageUp ||
           key == kKeyPageDown;
}

}  // namespace

bool VMultiSelTreeCtrl::Attach(IDialogWindow& newWindow, int id) {
    window = &newWindow;
    view = newWindow.AttachTree(id, items, *this);
    return view != nullptr;
}

void VMultiSelTreeCtrl::Detach() {
    StopTimer(renameTimer);
    StopTimer(typedTimer);
    window = nullptr;
    view = nullptr;
}

void VMultiSelTreeCtrl::StopTimer(int& timer) {
    if (timer != 0) window->StopTimer(timer);
    timer = 0;
}

bool VMultiSelTreeCtrl::OnTimer(int timer) {
    if (timer == typedTimer) {
        StopTimer(typedTimer);
        typed = VUnicodeString();
        return true;
    }
    if (timer != renameTimer) return false;
    StopTimer(renameTimer);
    owner.OnTreeRename(items.GetCaret());
    return true;
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
    if (anchor != item && items.IsInside(anchor, item)) anchor = TreeItem::kNone;
    const TreeItem caret = items.GetCaret();
    if (caret == item || !items.IsInside(caret, item)) return;
    items.SetCaret(item);
    items.SetState(item, kTreeSelected, true);
    owner.OnTreeSelectionChanged();
}

void VMultiSelTreeCtrl::OnMouseDown(MouseButton button, VPoint point, KeyModifiers modifiers) {
    StopTimer(renameTimer);
    if (button == MouseButton::kLeft)
        ClickLeft(point, modifiers);
    else
        ClickRight(point);
}

void VMultiSelTreeCtrl::ClickLeft(VPoint point, KeyModifiers modifiers) {
    const TreeHit place = view->HitTest(point);
    const TreeItem hit = ItemFromPoint(point);
    if (place.part == TreePart::kExpander)
        SetExpanded(place.item, !items.HasState(place.item, kTreeExpanded));
    else if (hit != TreeItem::kNone)
        MayRename(place, modifiers);
    if (!Has(modifiers, Accelerator::kShift)) anchor = TreeItem::kNone;
    if (hit != TreeItem::kNone) SelectByClick(hit, modifiers);
    owner.OnTreeSelectionChanged();
}

void VMultiSelTreeCtrl::MayRename(const TreeHit& hit, KeyModifiers modifiers) {
    const bool isAlone = items.GetSelectedCount() == 1 && items.HasState(hit.item, kTreeSelected);
    if (isAlone && hit.item == items.GetCaret() && modifiers == Accelerator::kNone && hit.part == TreePart::kLabel)
        renameTimer = window->StartTimer(kDoubleClickMilliseconds);
}

void VMultiSelTreeCtrl::SelectByClick(TreeItem hit, KeyModifiers modifiers) {
    if (Has(modifiers, Accelerator::kShift)) {
        if (!items.IsValid(anchor)) anchor = items.GetCaret() != TreeItem::kNone ? items.GetCaret() : hit;
        items.SetCaret(hit);
        SelectRange(anchor, hit, Has(modifiers, Accelerator::kControl));
    } else if (Has(modifiers, Accelerator::kControl)) {
        ToggleOne(hit);
    } else {
        MakeOnlySelected(hit);
    }
}

void VMultiSelTreeCtrl::ToggleOne(TreeItem item) {
    items.SetCaret(item);
    items.SetState(item, kTreeSelected, !items.HasState(item, kTreeSelected));
}

void VMultiSelTreeCtrl::ClickRight(VPoint point) {
    const TreeItem hit = view->HitTest(point).item;  // the whole row, as the menu does
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
    StopTimer(renameTimer);
    const TreeItem hit = ItemFromPoint(point);
    if (items.HasChildrenOrExpander(hit)) SetExpanded(hit, !items.HasState(hit, kTreeExpanded));
    owner.OnDoubleClick(point);
}

void VMultiSelTreeCtrl::OnBeginDrag(TreeItem item, VPoint point) {
    StopTimer(renameTimer);
    owner.OnBeginDrag(item, point);
}

bool VMultiSelTreeCtrl::OnBeginLabelEdit(TreeItem item) {
    StopTimer(renameTimer);
    return owner.OnBeginLabelEdit(item);
}

int VMultiSelTreeCtrl::CountRowsInView() const {
    VRectangle row;
    if (view == nullptr || !view->GetItemRectangle(items.GetCaret(), false, row)) return 1;
    const VRectangle client = view->GetClientRectangle();
    return std::max(1, (client.bottom - client.top) / (row.bottom - row.top));
}

TreeItem VMultiSelTreeCtrl::GetLastVisible() const {
    TreeItem item = items.GetLastChild(TreeItem::kNone);
    while (items.HasState(item, kTreeExpanded) && items.GetLastChild(item) != TreeItem::kNone)
        item = items.GetLastChild(item);
    return item;
}

TreeItem VMultiSelTreeCtrl::WalkRows(int count) const {
    TreeItem item = items.GetCaret();
    for (int i = 0; i < std::abs(count); ++i) {
        const TreeItem next = count < 0 ? items.GetPreviousVisible(item) : items.GetNextVisible(item);
        if (next == TreeItem::kNone) break;
        item = next;
    }
    return item;
}

TreeItem VMultiSelTreeCtrl::FollowArrowAcross(bool toTheRight) {
    const TreeItem caret = items.GetCaret();
    const bool isExpanded = items.HasState(caret, kTreeExpanded);
    if (toTheRight && isExpanded) return items.GetFirstChild(caret);
    if (!toTheRight && !isExpanded) return items.GetParent(caret);
    if (!toTheRight || items.HasChildrenOrExpander(caret)) SetExpanded(caret, toTheRight);
    return caret;
}

TreeItem VMultiSelTreeCtrl::FollowKey(std::uint16_t key) {
    const TreeItem caret = items.GetCaret();
    if (caret == TreeItem::kNone) return IsVertical(key) ? items.GetFirstChild(TreeItem::kNone) : caret;
    switch (key) {
        case kKeyUp:
            return WalkRows(-1);
        case kKeyDown:
            return WalkRows(1);
        case kKeyPageUp:
            return WalkRows(-std::max(1, CountRowsInView() - 1));
        case kKeyPageDown:
            return WalkRows(std::max(1, CountRowsInView() - 1));
        case kKeyHome:
            return items.GetFirstChild(TreeItem::kNone);
        case kKeyEnd:
            return GetLastVisible();
        case kKeyBack:
            return items.GetParent(caret);
        case kKeyLeft:
        case kKeyRight:
            return FollowArrowAcross(key == kKeyRight);
        case kKeyAdd:
            if (items.HasChildrenOrExpander(caret)) SetExpanded(caret, true);
            return caret;
        case kKeySubtract:
            SetExpanded(caret, false);
            return caret;
        default:
            return caret;
    }
}

void VMultiSelTreeCtrl::OnKeyDown(std::uint16_t key, KeyModifiers modifiers) {
    StopTimer(renameTimer);
    if (!items.IsValid(anchor)) anchor = items.GetCaret();
    const TreeItem former = items.GetCaret();
    const TreeItem target = FollowKey(key);
    const bool isRange = Has(modifiers, Accelerator::kShift) && IsVertical(key);
    if (target != TreeItem::kNone && (target != former || IsVertical(key))) {
        if (view != nullptr) view->EnsureVisible(target);
        items.SetCaret(target);
        if (isRange) {
            if (!items.IsValid(anchor)) anchor = target;
            SelectRange(anchor, target, false);
        } else {
            MakeOnlySelected(target);
            anchor = TreeItem::kNone;
        }
        owner.OnTreeSelectionChanged();
    }
    owner.OnKeyDown(key, modifiers);
}

TreeItem VMultiSelTreeCtrl::FindTyped(bool fromNext) const {
    const bool hasCaret = items.GetCaret() != TreeItem::kNone;
    const TreeItem caret = hasCaret ? items.GetCaret() : items.GetFirstChild(TreeItem::kNone);
    const auto fits = [this](TreeItem item) { return items.GetText(item).Left(typed.GetLength()).EqualsNoCase(typed); };
    if (caret == TreeItem::kNone || ((!fromNext || !hasCaret) && fits(caret))) return caret;
    // Round once, from the row behind the caret.
    for (TreeItem item = items.GetNextVisible(caret); item != caret; item = items.GetNextVisible(item)) {
        if (item == TreeItem::kNone) item = items.GetFirstChild(TreeItem::kNone);
        if (fits(item)) return item;
        if (item == caret) break;
    }
    return TreeItem::kNone;
}

void VMultiSelTreeCtrl::OnText(const VUnicodeString& text) {
    const bool isBlank = typed.IsEmpty() && text == u" ";
    if (window == nullptr || isBlank) return;
    StopTimer(typedTimer);
    // One letter again and again leads from one item that begins with it to the next.
    const bool isAgain = typed == text;
    if (!isAgain) typed += text;
    typedTimer = window->StartTimer(kTypingMilliseconds);
    const TreeItem found = FindTyped(isAgain || typed == text);
    if (found != TreeItem::kNone && found != items.GetCaret()) SelectItem(found);
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
