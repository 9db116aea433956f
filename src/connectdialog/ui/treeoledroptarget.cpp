#include "connectdialog/ui/treeoledroptarget.h"

#include "connectdialog/ui/connectdialog.h"

namespace connectdialog {

namespace {

/// So near to the upper or lower edge a drag scrolls the tree.
constexpr std::int32_t kScrollEdge = 10;

}  // namespace

DropEffect TreeOleDropTarget::OnDragEnter(const VDragData& data, VPoint point, KeyModifiers modifiers) {
    return dialog.OnDragEntered(data, point, modifiers);
}

DropEffect TreeOleDropTarget::OnDragOver(VPoint point, KeyModifiers modifiers) {
    if (dialog.dragAccepted) OnDragScroll(point);
    return dialog.OnDraggedOver(point, modifiers);
}

bool TreeOleDropTarget::OnDrop(const VDragData& data, VPoint point, DropEffect effect) {
    return dialog.OnDropped(data, point, effect);
}

void TreeOleDropTarget::OnDragLeave() {
    dialog.OnDragLeft();
}

void TreeOleDropTarget::OnDragScroll(VPoint point) {
    ITreeView& view = *dialog.GetTree().GetView();
    const VRectangle client = view.GetClientRectangle();
    const int rows = point.y < client.top + kScrollEdge ? -1 : point.y >= client.bottom - kScrollEdge ? 1 : 0;
    if (rows == 0) return;
    dialog.DragLeave();
    view.ScrollRows(rows);
    dialog.DragEnter(point);
}

}  // namespace connectdialog
