// A tree control that nobody sees, with rows of 20 pixels: what a user would read there, and what a user can do.
#pragma once

#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "imports/dialogkit/treeview.h"
#include "resources/accelerators.h"
#include "suite/dialogkit/headless/treereading.h"

namespace connectdialog {

class HeadlessDialog;
class HeadlessTree;

/// The user's hand during a drag over the tree.
class HeadlessDrag {
  public:
    HeadlessDrag(HeadlessTree& tree, const VDragData& data) : tree(tree), data(data) {}

    /// Gives what a drop there would do.
    DropEffect MoveTo(VPoint point, KeyModifiers modifiers = 0);
    /// Rests there.
    void Wait(unsigned milliseconds);
    void Leave();
    /// True when the data was taken.
    bool Drop();
    DropEffect GetEffect() const { return effect; }
    DropEffect GetOutcome() const { return outcome; }

  private:
    HeadlessTree& tree;
    const VDragData& data;
    VPoint point;
    DropEffect effect = DropEffect::kNone;
    DropEffect outcome = DropEffect::kNone;
    bool isInside = false;
};

class HeadlessTree : public ITreeView, private ITreeItemsObserver {
  public:
    using DragScript = std::function<void(HeadlessDrag& drag)>;

    static constexpr std::int32_t kRowHeight = 20;
    static constexpr std::int32_t kIndent = 16;  ///< also the width of an expander and of an icon

    HeadlessTree(HeadlessDialog& dialog, int id, VTreeItems& items, ITreeEvents& events);
    ~HeadlessTree() override;

    // What the user does. An item that is folded away cannot be reached: false, and nothing happens.

    bool Click(TreeItem item, KeyModifiers modifiers = 0);
    bool RightClick(TreeItem item);
    bool DoubleClick(TreeItem item);
    bool ClickExpander(TreeItem item);
    void ClickAt(VPoint point, KeyModifiers modifiers = 0);
    /// While a label is edited, Return and Escape end that and other keys are typed; else the key goes to the tree.
    bool PressKey(std::uint16_t key, KeyModifiers modifiers = 0);
    /// Types a text that is no label's.
    bool TypeText(const VUnicodeString& text);
    /// Puts a text into the label that is edited and ends the edit with it.
    bool TypeLabel(const VUnicodeString& text);
    bool CancelLabel();
    /// Takes the item and does what the script says. False when the item cannot be dragged, and then no script runs.
    bool Drag(TreeItem item, const DragScript& script);
    /// The same with data from elsewhere.
    void DragFromOutside(const VDragData& data, const DragScript& script);

    // What the user sees.

    /// See treereading.h.
    TreeItem Find(std::u16string_view path) const { return FindItemByPath(items, path); }
    /// All rows from the top: see ReadTreeRows.
    std::string Read() const;
    /// The middle of the label, scrolled into view and, as far as it goes, away from the edges where a drag scrolls;
    /// `dy` pixels from the row's top when it is not negative.
    VPoint PointOn(TreeItem item, std::int32_t dy = -1);
    /// The tip; empty: none.
    VUnicodeString GetTip(TreeItem item) const;
    bool IsEditing() const { return editing != TreeItem::kNone; }
    TreeItem GetEdited() const { return editing; }
    const VUnicodeString& GetEditText() const { return editText; }
    std::int32_t GetFirstRow() const;
    bool ShowsDragImage() const { return showsDragImage; }

    // ITreeView.
    TreeHit HitTest(VPoint point) const override;
    bool GetItemRectangle(TreeItem item, bool labelOnly, VRectangle& rectangle) const override;
    VRectangle GetClientRectangle() const override;
    void EnsureVisible(TreeItem item) override { toBeSeen = item; }
    void ScrollRows(int rowCount) override;
    void Redraw() override {}
    void BeginLabelEdit(TreeItem item) override;
    void EndLabelEdit(bool keepText) override;
    DropEffect RunDrag(TreeItem item, const VDragData& data) override;
    bool EnterDragImage(VPoint) override { return showsDragImage = true; }
    void MoveDragImage(VPoint) override {}
    void LeaveDragImage() override { showsDragImage = false; }

  private:
    friend class HeadlessDrag;
    void OnItemInserted(TreeItem) override {}
    void OnItemRemoving(TreeItem item) override;
    void OnItemChanged(TreeItem) override {}
    /// Finds the rows when they changed since the last time: not in each change, or many would take long.
    void FindRows() const;
    bool SendMouseDown(TreeItem item, MouseButton button, KeyModifiers modifiers, TreePart part);
    std::int32_t CountRowsInView() const;

    HeadlessDialog& dialog;
    int id;
    VTreeItems& items;
    ITreeEvents& events;
    TreeItem editing = TreeItem::kNone;
    VUnicodeString editText;
    const DragScript* dragScript = nullptr;
    bool wasDragged = false;
    bool showsDragImage = false;
    mutable std::uint64_t rowsShape = 0;
    mutable std::vector<TreeItem> rows;
    mutable std::unordered_map<TreeItem, std::int32_t> rowOf;
    mutable std::int32_t firstRow = 0;
    mutable TreeItem toBeSeen = TreeItem::kNone;
};

}  // namespace connectdialog
