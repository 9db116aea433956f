#include "suite/dialogkit/headless/headlesstree.h"

#include <algorithm>
#include <utility>

#include "suite/dialogkit/headless/headlessdialog.h"

namespace connectdialog {

HeadlessTree::HeadlessTree(HeadlessDialog& dialog, int id, VTreeItems& items, ITreeEvents& events)
    : dialog(dialog), id(id), items(items), events(events) {
    items.SetObserver(this);
}

HeadlessTree::~HeadlessTree() {
    items.SetObserver(nullptr);
}

void HeadlessTree::OnItemRemoving(TreeItem item) {
    if (items.IsInside(editing, item)) EndLabelEdit(false);
}

void HeadlessTree::FindRows() const {
    if (std::exchange(rowsShape, items.GetShape()) != items.GetShape()) {
        rows.clear();
        rowOf.clear();
        for (TreeItem item = items.GetFirstChild(TreeItem::kNone); item != TreeItem::kNone;
             item = items.GetNextVisible(item)) {
            rowOf[item] = static_cast<std::int32_t>(rows.size());
            rows.push_back(item);
        }
    }
    const auto wanted = rowOf.find(std::exchange(toBeSeen, TreeItem::kNone));
    if (wanted != rowOf.end())
        firstRow = std::clamp(firstRow, std::max(0, wanted->second - CountRowsInView() + 1), wanted->second);
    const auto count = static_cast<std::int32_t>(rows.size());
    firstRow = std::clamp(firstRow, 0, std::max(0, count - CountRowsInView()));
}

std::int32_t HeadlessTree::CountRowsInView() const {
    const VRectangle client = GetClientRectangle();
    return std::max(1, (client.bottom - client.top) / kRowHeight);
}

std::int32_t HeadlessTree::GetFirstRow() const {
    FindRows();
    return firstRow;
}

VRectangle HeadlessTree::GetClientRectangle() const {
    const VRectangle place = dialog.GetRectangle(id);
    return {0, 0, place.right - place.left, place.bottom - place.top};
}

TreeHit HeadlessTree::HitTest(VPoint point) const {
    FindRows();
    const VRectangle client = GetClientRectangle();
    if (point.x < 0 || point.x >= client.right || point.y < 0 || point.y >= client.bottom) return {};
    const auto row = static_cast<std::size_t>(firstRow) + static_cast<std::size_t>(point.y / kRowHeight);
    if (row >= rows.size()) return {};
    const TreeItem item = rows[row];
    const std::int32_t x = point.x - GetTreeLevel(items, item) * kIndent;
    if (x < 0 || x >= 2 * kIndent + HeadlessTextWidth(items.GetText(item))) return {item, TreePart::kBeside};
    if (x >= 2 * kIndent) return {item, TreePart::kLabel};
    if (x >= kIndent) return {item, TreePart::kIcon};
    return {item, items.HasChildrenOrExpander(item) ? TreePart::kExpander : TreePart::kBeside};
}

bool HeadlessTree::GetItemRectangle(TreeItem item, bool labelOnly, VRectangle& rectangle) const {
    FindRows();
    const auto row = rowOf.find(item);
    const VRectangle client = GetClientRectangle();
    if (row == rowOf.end()) return false;
    const std::int32_t top = (row->second - firstRow) * kRowHeight;
    if (top < 0 || top >= client.bottom) return false;
    rectangle = {0, top, client.right, top + kRowHeight};
    if (labelOnly) {
        rectangle.left = (GetTreeLevel(items, item) + 2) * kIndent;
        rectangle.right = rectangle.left + HeadlessTextWidth(items.GetText(item));
    }
    return true;
}

void HeadlessTree::ScrollRows(int rowCount) {
    FindRows();
    firstRow += rowCount;
    FindRows();
}

void HeadlessTree::BeginLabelEdit(TreeItem item) {
    EndLabelEdit(false);
    if (!items.IsValid(item) || !events.OnBeginLabelEdit(item)) return;
    dialog.SetFocus(id);
    editing = item;
    editText = items.GetText(item);
}

void HeadlessTree::EndLabelEdit(bool keepText) {
    if (!IsEditing()) return;
    const TreeItem item = std::exchange(editing, TreeItem::kNone);
    const VUnicodeString text = editText;
    events.OnEndLabelEdit(item, keepText ? &text : nullptr);
}

DropEffect HeadlessTree::RunDrag(TreeItem, const VDragData& data) {
    if (dragScript == nullptr) return DropEffect::kNone;
    wasDragged = true;
    HeadlessDrag drag(*this, data);
    (*std::exchange(dragScript, nullptr))(drag);
    drag.Leave();
    return drag.GetOutcome();
}

bool HeadlessTree::Drag(TreeItem item, const DragScript& script) {
    if (!SendMouseDown(item, MouseButton::kLeft, 0, TreePart::kLabel)) return false;
    dragScript = &script;
    wasDragged = false;
    events.OnBeginDrag(item, PointOn(item));
    dragScript = nullptr;
    return wasDragged;
}

void HeadlessTree::DragFromOutside(const VDragData& data, const DragScript& script) {
    HeadlessDrag drag(*this, data);
    script(drag);
    drag.Leave();
}

bool HeadlessTree::SendMouseDown(TreeItem item, MouseButton button, KeyModifiers modifiers, TreePart part) {
    VPoint point = PointOn(item);
    if (HitTest(point).item != item || dialog.IsClosed()) return false;
    if (part == TreePart::kExpander) point.x = GetTreeLevel(items, item) * kIndent + kIndent / 2;
    if (HitTest(point).part != part && part == TreePart::kExpander) return false;
    EndLabelEdit(true);  // a click outside of the edit box
    if (IsEditing()) return true;
    dialog.SetFocus(id);
    events.OnMouseDown(button, point, modifiers);
    return true;
}

bool HeadlessTree::Click(TreeItem item, KeyModifiers modifiers) {
    return SendMouseDown(item, MouseButton::kLeft, modifiers, TreePart::kLabel);
}
bool HeadlessTree::RightClick(TreeItem item) {
    return SendMouseDown(item, MouseButton::kRight, 0, TreePart::kLabel);
}
bool HeadlessTree::ClickExpander(TreeItem item) {
    return SendMouseDown(item, MouseButton::kLeft, 0, TreePart::kExpander);
}
bool HeadlessTree::DoubleClick(TreeItem item) {
    if (!Click(item)) return false;
    events.OnDoubleClick(PointOn(item));
    return true;
}
void HeadlessTree::ClickAt(VPoint point, KeyModifiers modifiers) {
    EndLabelEdit(true);
    if (IsEditing()) return;
    dialog.SetFocus(id);
    events.OnMouseDown(MouseButton::kLeft, point, modifiers);
}

bool HeadlessTree::PressKey(std::uint16_t key, KeyModifiers modifiers) {
    if (!IsEditing())
        events.OnKeyDown(key, modifiers);
    else if (key == kKeyReturn)
        EndLabelEdit(true);
    else if (key == kKeyEscape)
        EndLabelEdit(false);
    return true;
}

bool HeadlessTree::TypeText(const VUnicodeString& text) {
    if (dialog.IsClosed() || IsEditing()) return false;
    events.OnText(text);
    return true;
}

bool HeadlessTree::TypeLabel(const VUnicodeString& text) {
    if (!IsEditing()) return false;
    editText = text;
    EndLabelEdit(true);
    return true;
}
bool HeadlessTree::CancelLabel() {
    if (!IsEditing()) return false;
    EndLabelEdit(false);
    return true;
}

VPoint HeadlessTree::PointOn(TreeItem item, std::int32_t dy) {
    EnsureVisible(item);
    VRectangle label;
    if (!GetItemRectangle(item, true, label)) return {-1, -1};
    // Away from the edges, where a drag would scroll.
    if (label.top == 0) ScrollRows(-1);
    if (label.bottom > GetClientRectangle().bottom - kRowHeight) ScrollRows(1);
    GetItemRectangle(item, true, label);
    return {label.left + 3, label.top + (dy < 0 ? kRowHeight / 2 : dy)};
}

VUnicodeString HeadlessTree::GetTip(TreeItem item) const {
    VUnicodeString text;
    return events.OnInfoTip(item, text) ? text : VUnicodeString();
}

std::string HeadlessTree::Read() const {
    FindRows();
    return ReadTreeRows(items, rows);
}

DropEffect HeadlessDrag::MoveTo(VPoint newPoint, KeyModifiers modifiers) {
    point = newPoint;
    effect =
        isInside ? tree.events.OnDragOver(data, point, modifiers) : tree.events.OnDragEnter(data, point, modifiers);
    isInside = true;
    return effect;
}

void HeadlessDrag::Wait(unsigned milliseconds) {
    tree.dialog.Elapse(milliseconds);
}

void HeadlessDrag::Leave() {
    if (std::exchange(isInside, false)) tree.events.OnDragLeave();
    effect = DropEffect::kNone;
}

bool HeadlessDrag::Drop() {
    // Where a drop does nothing, letting go is leaving.
    if (!isInside || effect == DropEffect::kNone) {
        Leave();
        return false;
    }
    isInside = false;
    const DropEffect done = std::exchange(effect, DropEffect::kNone);
    if (!tree.events.OnDrop(data, point, done)) return false;
    outcome = done;
    return true;
}

}  // namespace connectdialog
