#include "imports/dialogkit/vtreeitems.h"

#include <algorithm>

namespace connectdialog {

namespace {
constexpr unsigned kGenerationShift = 32;
}  // namespace

const VTreeItems::Node* VTreeItems::Find(TreeItem item) const {
    const std::uint32_t index = IndexOf(item);
    if (index == kNil || index >= nodes.size()) return nullptr;
    const Node& node = nodes[index];
    const bool isSame = node.isLive && node.generation == static_cast<std::uint64_t>(item) >> kGenerationShift;
    return isSame ? &node : nullptr;
}

TreeItem VTreeItems::HandleOf(std::uint32_t index) const {
    if (index == kNil) return TreeItem::kNone;
    return static_cast<TreeItem>(std::uint64_t{nodes[index].generation} << kGenerationShift | index);
}

TreeItem VTreeItems::Follow(TreeItem item, std::uint32_t Node::*link) const {
    const Node* node = Find(item);
    return node != nullptr ? HandleOf(node->*link) : TreeItem::kNone;
}

TreeItem VTreeItems::Insert(TreeItem parent, TreePlace place, TreeItem after, const VUnicodeString& text,
                            std::uint8_t image, std::uint8_t selectedImage, void* data) {
    if (parent != TreeItem::kNone && !IsValid(parent)) return TreeItem::kNone;
    const std::uint32_t index = Allocate();
    Node& node = nodes[index];
    node.text = text;
    node.data = data;
    node.image = image;
    node.selectedImage = selectedImage;
    const std::uint32_t parentIndex = IndexOf(parent);
    std::uint32_t previous = place == TreePlace::kFirst ? kNil : nodes[parentIndex].lastChild;
    if (place == TreePlace::kBehind && IsValid(after) && nodes[IndexOf(after)].parent == parentIndex)
        previous = IndexOf(after);
    Link(index, parentIndex, previous);
    ++shape;
    const TreeItem item = HandleOf(index);
    if (observer != nullptr) observer->OnItemInserted(item);
    return item;
}

std::uint32_t VTreeItems::Allocate() {
    if (freed.empty()) {
        nodes.emplace_back().isLive = true;
        return static_cast<std::uint32_t>(nodes.size() - 1);
    }
    const std::uint32_t index = freed.back();
    freed.pop_back();
    nodes[index].isLive = true;
    return index;
}

void VTreeItems::Link(std::uint32_t index, std::uint32_t parent, std::uint32_t previous) {
    Node& node = nodes[index];
    node.parent = parent;
    node.previous = previous;
    node.next = previous == kNil ? nodes[parent].firstChild : nodes[previous].next;
    (previous == kNil ? nodes[parent].firstChild : nodes[previous].next) = index;
    (node.next == kNil ? nodes[parent].lastChild : nodes[node.next].previous) = index;
}

void VTreeItems::Unlink(std::uint32_t index) {
    const Node& node = nodes[index];
    (node.previous == kNil ? nodes[node.parent].firstChild : nodes[node.previous].next) = node.next;
    (node.next == kNil ? nodes[node.parent].lastChild : nodes[node.next].previous) = node.previous;
}

void VTreeItems::Remove(TreeItem item) {
    if (!IsValid(item)) return;
    if (observer != nullptr) observer->OnItemRemoving(item);
    const std::uint32_t top = IndexOf(item);
    for (std::uint32_t index = top;;) {
        while (nodes[index].firstChild != kNil) index = nodes[index].firstChild;
        const std::uint32_t parent = nodes[index].parent;
        Free(index);
        if (index == top) return;
        index = parent;
    }
}

void VTreeItems::Free(std::uint32_t index) {
    const TreeItem item = HandleOf(index);
    SetState(item, kTreeSelected, false);
    if (caret == item) caret = TreeItem::kNone;
    if (insertMark == item) insertMark = TreeItem::kNone;
    Unlink(index);
    ++shape;
    Node& node = nodes[index];
    void* const data = node.data;
    const std::uint32_t generation = node.generation + 1;
    node = Node();
    node.generation = generation;
    freed.push_back(index);
    owner.OnItemDeleted(data);
}

void VTreeItems::Clear() {
    while (nodes[kNil].firstChild != kNil) Remove(HandleOf(nodes[kNil].firstChild));
}

TreeItem VTreeItems::GetFirstChild(TreeItem item) const {
    return item == TreeItem::kNone ? HandleOf(nodes[kNil].firstChild) : Follow(item, &Node::firstChild);
}
TreeItem VTreeItems::GetLastChild(TreeItem item) const {
    return item == TreeItem::kNone ? HandleOf(nodes[kNil].lastChild) : Follow(item, &Node::lastChild);
}
TreeItem VTreeItems::GetParent(TreeItem item) const {
    return Follow(item, &Node::parent);
}
TreeItem VTreeItems::GetNextSibling(TreeItem item) const {
    return Follow(item, &Node::next);
}
TreeItem VTreeItems::GetPreviousSibling(TreeItem item) const {
    return Follow(item, &Node::previous);
}

TreeItem VTreeItems::GetNextVisible(TreeItem item) const {
    if (HasState(item, kTreeExpanded) && GetFirstChild(item) != TreeItem::kNone) return GetFirstChild(item);
    while (item != TreeItem::kNone && GetNextSibling(item) == TreeItem::kNone) item = GetParent(item);
    return GetNextSibling(item);
}

TreeItem VTreeItems::GetPreviousVisible(TreeItem item) const {
    TreeItem previous = GetPreviousSibling(item);
    if (previous == TreeItem::kNone) return GetParent(item);
    while (HasState(previous, kTreeExpanded) && GetLastChild(previous) != TreeItem::kNone)
        previous = GetLastChild(previous);
    return previous;
}

bool VTreeItems::IsInside(TreeItem item, TreeItem ancestor) const {
    while (item != TreeItem::kNone && item != ancestor) item = GetParent(item);
    return item != TreeItem::kNone;
}

VUnicodeString VTreeItems::GetText(TreeItem item) const {
    const Node* node = Find(item);
    return node != nullptr ? node->text : VUnicodeString();
}

void VTreeItems::SetText(TreeItem item, const VUnicodeString& text) {
    Node* node = Find(item);
    if (node == nullptr) return;
    node->text = text;
    Changed(item);
}

void* VTreeItems::GetData(TreeItem item) const {
    const Node* node = Find(item);
    return node != nullptr ? node->data : nullptr;
}

std::uint8_t VTreeItems::GetImage(TreeItem item, bool isSelected) const {
    const Node* node = Find(item);
    if (node == nullptr) return 0;
    return isSelected ? node->selectedImage : node->image;
}

bool VTreeItems::HasState(TreeItem item, TreeItemState state) const {
    const Node* node = Find(item);
    return node != nullptr && (node->state & state) != 0;
}

void VTreeItems::SetState(TreeItem item, TreeItemState state, bool isOn) {
    Node* node = Find(item);
    if (node == nullptr || ((node->state & state) != 0) == isOn) return;
    node->state = static_cast<std::uint8_t>(isOn ? node->state | state : node->state & ~state);
    if (state == kTreeExpanded) ++shape;
    if (state == kTreeSelected) {
        selectedCount += isOn ? 1 : std::size_t{0} - 1;
        if (isOn) selected.push_back(item);
        TrimSelected();
    }
    Changed(item);
}

/// Items that were selected and are not any more are let go once they outnumber the others.
void VTreeItems::TrimSelected() {
    constexpr std::size_t kSlack = 64;
    if (selected.size() <= 2 * selectedCount + kSlack) return;
    selected = GetSelected();
}

bool VTreeItems::HasChildrenOrExpander(TreeItem item) const {
    return GetFirstChild(item) != TreeItem::kNone || HasState(item, kTreeForcedExpander);
}

void VTreeItems::SetCaret(TreeItem item) {
    if (item != TreeItem::kNone && !IsValid(item)) return;
    const TreeItem former = std::exchange(caret, item);
    Changed(former);
    Changed(item);
}

void VTreeItems::ClearSelection() {
    for (const TreeItem item : std::exchange(selected, {})) SetState(item, kTreeSelected, false);
}

std::vector<TreeItem> VTreeItems::GetSelected() const {
    std::vector<TreeItem> items;
    for (const TreeItem item : selected)
        if (HasState(item, kTreeSelected)) items.push_back(item);
    // An item that was selected again stands in the list twice.
    std::sort(items.begin(), items.end());
    items.erase(std::unique(items.begin(), items.end()), items.end());
    return items;
}

void VTreeItems::SetInsertMark(TreeItem item, bool isBehind) {
    const TreeItem former = std::exchange(insertMark, IsValid(item) ? item : TreeItem::kNone);
    isMarkBehind = isBehind;
    Changed(former);
    Changed(insertMark);
}

}  // namespace connectdialog
