#include "suite/dialogkit/lists/optionlist.h"

#include "resources/accelerators.h"

namespace connectdialog {

namespace {
constexpr std::uint8_t kNoImage = 0xFF;
/// How far the keys for a page go.
constexpr int kRowsOfAPage = 10;
}  // namespace

TreeItem OptionList::Add(TreeItem parent, const VUnicodeString& text, const void* data) {
    // The tree's rows carry what can be written to; nobody does through this list.
    auto* const carried = const_cast<void*>(data);
    const TreeItem item = items.Insert(parent, TreePlace::kLast, TreeItem::kNone, text, kNoImage, kNoImage, carried);
    if (parent != TreeItem::kNone) items.SetState(parent, kTreeExpanded, true);
    return item;
}

void OptionList::Select(TreeItem item) {
    items.ClearSelection();
    selected = item;
    items.SetState(item, kTreeSelected, true);
    items.SetCaret(item);
    if (view != nullptr && item != TreeItem::kNone) view->EnsureVisible(item);
}

TreeItem OptionList::Find(const void* data) const {
    TreeItem item = items.GetFirstChild(TreeItem::kNone);
    while (item != TreeItem::kNone && items.GetData(item) != data) item = items.GetNextVisible(item);
    return item;
}

void OptionList::Choose(TreeItem item) {
    if (item != TreeItem::kNone && item != selected && choose(items.GetData(item)) && items.IsValid(item)) Select(item);
}

void OptionList::OnMouseDown(MouseButton, VPoint point, KeyModifiers) {
    const TreeHit hit = view->HitTest(point);
    if (hit.part != TreePart::kExpander) return Choose(hit.item);
    const bool isExpanded = items.HasState(hit.item, kTreeExpanded);
    if (isExpanded && items.IsInside(selected, hit.item)) Choose(hit.item);
    if (isExpanded && items.IsInside(selected, hit.item) && selected != hit.item) return;
    items.SetState(hit.item, kTreeExpanded, !isExpanded);
}

TreeItem OptionList::Step(std::uint16_t key) const {
    const bool isDown = key == kKeyDown || key == kKeyPageDown || key == kKeyEnd;
    int steps = key == kKeyDown || key == kKeyUp ? 1 : kRowsOfAPage;
    const bool toTheEnd = key == kKeyHome || key == kKeyEnd;
    TreeItem item = selected;
    while (toTheEnd || steps-- > 0) {
        const TreeItem next = isDown ? items.GetNextVisible(item) : items.GetPreviousVisible(item);
        if (next == TreeItem::kNone) break;
        item = next;
    }
    return item;
}

void OptionList::OnKeyDown(std::uint16_t key, KeyModifiers modifiers) {
    const bool isMove = key == kKeyUp || key == kKeyDown || key == kKeyPageUp || key == kKeyPageDown ||
                        key == kKeyHome || key == kKeyEnd;
    if (modifiers != Accelerator::kNone) return;
    if (isMove)
        Choose(selected == TreeItem::kNone ? items.GetFirstChild(TreeItem::kNone) : Step(key));
    else if (key == kKeyLeft || key == kKeyRight)
        items.SetState(selected, kTreeExpanded, key == kKeyRight);
}

bool OptionList::OnInfoTip(TreeItem item, VUnicodeString& text) {
    text = items.GetText(item);
    return true;
}

}  // namespace connectdialog
