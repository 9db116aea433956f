// A list from which one row is chosen at a time, over a tree control.
#pragma once

#include <functional>

#include "imports/dialogkit/treeview.h"

namespace connectdialog {

/// The rows carry pointers of the owner's. Rows below others stand indented; all are shown unfolded until the user
/// folds them.
class OptionList : private ITreeEvents, private ITreeItemsOwner {
  public:
    /// Asked before the user's choice counts; false leaves the choice where it is.
    using Choice = std::function<bool(const void* data)>;

    explicit OptionList(Choice choose) : choose(std::move(choose)), items(*this) {}

    /// Requires: the window goes before this list.
    void Attach(IDialogWindow& window, int id) { view = window.AttachTree(id, items, *this); }
    void Clear() { items.Clear(); }
    /// `parent` may be kNone.
    TreeItem Add(TreeItem parent, const VUnicodeString& text, const void* data);
    /// Makes it the chosen row without asking; kNone: no row is.
    void Select(TreeItem item);
    TreeItem GetSelected() const { return selected; }
    /// The row with that data, or kNone.
    TreeItem Find(const void* data) const;
    VTreeItems& Items() { return items; }

  private:
    void Choose(TreeItem item);
    TreeItem Step(std::uint16_t key) const;

    // ITreeEvents.
    void OnMouseDown(MouseButton button, VPoint point, KeyModifiers modifiers) override;
    void OnDoubleClick(VPoint) override {}
    void OnKeyDown(std::uint16_t key, KeyModifiers modifiers) override;
    void OnText(const VUnicodeString&) override {}
    void OnBeginDrag(TreeItem, VPoint) override {}
    bool OnBeginLabelEdit(TreeItem) override { return false; }
    void OnEndLabelEdit(TreeItem, const VUnicodeString*) override {}
    bool OnInfoTip(TreeItem item, VUnicodeString& text) override;
    DropEffect OnDragEnter(const VDragData&, VPoint, KeyModifiers) override { return DropEffect::kNone; }
    DropEffect OnDragOver(const VDragData&, VPoint, KeyModifiers) override { return DropEffect::kNone; }
    void OnDragLeave() override {}
    bool OnDrop(const VDragData&, VPoint, DropEffect) override { return false; }
    void OnItemDeleted(void*) override {}

    Choice choose;
    VTreeItems items;
    ITreeView* view = nullptr;
    TreeItem selected = TreeItem::kNone;
};

}  // namespace connectdialog
