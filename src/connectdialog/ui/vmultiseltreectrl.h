// A tree control in which several items can be selected.
#pragma once

#include <vector>

#include "imports/dialogkit/treeview.h"
#include "imports/dialogkit/vtreeitems.h"

namespace connectdialog {

/// Whoever shows such a tree. Beside what the user does it is told of these, whether the user or code was the cause.
class ITreeOwner : public ITreeEvents, public ITreeItemsOwner {
  public:
    /// The item expands and was not expanded once: its children are wanted now.
    virtual void OnTreeExpanding(TreeItem item) = 0;
    /// Another item is the caret, or other items are selected.
    virtual void OnTreeSelectionChanged() = 0;
    /// A menu is wanted at the point.
    virtual void OnTreeContextMenu(VPoint point) = 0;
    /// The user clicked the label of the only selected item and left it at that.
    virtual void OnTreeRename(TreeItem item) = 0;
};

/// Turns clicks and keys into selection, caret and expansion, the same over every back end: a click selects one item,
/// with Control it adds or takes away one, with Shift a range from the item where the first such click began; the arrow
/// keys walk, typed text leads to the next item that begins with it, and a single click on the label of the only
/// selected item asks for another name. What is no matter of selection goes on to the owner.
class VMultiSelTreeCtrl : private ITreeEvents {
  public:
    explicit VMultiSelTreeCtrl(ITreeOwner& owner) : owner(owner), items(owner) {}

    /// Shows the tree in a control of the window, until the window goes. False when there is no such control.
    bool Attach(IDialogWindow& window, int id);
    void Detach();
    /// True when the timer was one of its own.
    bool OnTimer(int timer);

    VTreeItems& GetItems() { return items; }
    /// Null while it is not shown.
    ITreeView* GetView() const { return view; }

    /// Makes it the caret, the anchor of the next range and the only selected item, with the folders above it open.
    /// kNone: no caret, and nothing is selected.
    void SelectItem(TreeItem item);
    void ClearSelection() { items.ClearSelection(); }
    /// The user does something else than rename the item whose label was clicked.
    void ForgetRename() { StopTimer(renameTimer); }
    void SetExpanded(TreeItem item, bool isExpanded);
    /// The item whose icon or label is under the point.
    TreeItem ItemFromPoint(VPoint point) const;
    TreeItem HitTest(VPoint point) const { return view != nullptr ? view->HitTest(point).item : TreeItem::kNone; }

  private:
    void OnMouseDown(MouseButton button, VPoint point, KeyModifiers modifiers) override;
    void OnDoubleClick(VPoint point) override;
    void OnKeyDown(std::uint16_t key, KeyModifiers modifiers) override;
    void OnText(const VUnicodeString& text) override;
    void OnBeginDrag(TreeItem item, VPoint point) override;
    bool OnBeginLabelEdit(TreeItem item) override;
    void OnEndLabelEdit(TreeItem item, const VUnicodeString* text) override { owner.OnEndLabelEdit(item, text); }
    bool OnInfoTip(TreeItem item, VUnicodeString& text) override { return owner.OnInfoTip(item, text); }
    DropEffect OnDragEnter(const VDragData& data, VPoint point, KeyModifiers modifiers) override;
    DropEffect OnDragOver(const VDragData& data, VPoint point, KeyModifiers modifiers) override;
    void OnDragLeave() override { owner.OnDragLeave(); }
    bool OnDrop(const VDragData& data, VPoint point, DropEffect effect) override;

    void ClickLeft(VPoint point, KeyModifiers modifiers);
    void MayRename(const TreeHit& hit, KeyModifiers modifiers);
    void SelectByClick(TreeItem hit, KeyModifiers modifiers);
    void ClickRight(VPoint point);
    /// From `first` to `last` as they are seen; other items are switched off unless they are kept.
    void SelectRange(TreeItem first, TreeItem last, bool keepOthers);
    void ToggleOne(TreeItem item);
    void MakeOnlySelected(TreeItem item);
    void Reveal(TreeItem item);
    /// Where a key leads from the caret; the caret itself when nowhere.
    TreeItem FollowKey(std::uint16_t key);
    TreeItem FollowArrowAcross(bool toTheRight);
    /// So many rows down, or up when negative, as far as there are rows.
    TreeItem WalkRows(int count) const;
    TreeItem GetLastVisible() const;
    int CountRowsInView() const;
    TreeItem FindTyped(bool fromNext) const;
    void StopTimer(int& timer);

    ITreeOwner& owner;
    VTreeItems items;
    IDialogWindow* window = nullptr;
    ITreeView* view = nullptr;
    TreeItem anchor = TreeItem::kNone;
    int renameTimer = 0;
    VUnicodeString typed;  ///< shortly one after the other
    int typedTimer = 0;
};

}  // namespace connectdialog
