// What is dragged over the tree of the connect dialog.
#pragma once

#include "imports/dialogkit/treeview.h"

namespace connectdialog {

class ConnectDialog;

/// Forwards what the tree tells of a drag to the dialog, which owns it, and scrolls the tree near its edges.
class TreeOleDropTarget {
  public:
    explicit TreeOleDropTarget(ConnectDialog& dialog) : dialog(dialog) {}

    DropEffect OnDragEnter(const VDragData& data, VPoint point, KeyModifiers modifiers);
    DropEffect OnDragOver(VPoint point, KeyModifiers modifiers);
    bool OnDrop(const VDragData& data, VPoint point, DropEffect effect);
    void OnDragLeave();

  private:
    void OnDragScroll(VPoint point);

    ConnectDialog& dialog;
};

}  // namespace connectdialog
