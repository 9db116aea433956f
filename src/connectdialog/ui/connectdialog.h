// The connect dialog itself: ConnectDialogBase over a tree control.
#pragma once

#include "connectdialog/connectdialogbase.h"
#include "connectdialog/ui/connecttoolbar.h"
#include "connectdialog/ui/treeoledroptarget.h"
#include "connectdialog/ui/vmultiseltreectrl.h"

namespace connectdialog {

class VPopupMenu;

class ConnectDialog : public ConnectDialogBase, private ITreeOwner {
  public:
    ConnectDialog(const VUnicodeString& title, const ConnectDialogOptions& options, VWindow* parent);
    ~ConnectDialog() override;

    /// Find is asked for as soon as the dialog shows. Before that.
    void BeginWithFind() { beginsWithFind = true; }

  protected:
    void OnInitDialog() override;
    bool OnCommand(int command) override;
    bool PreTranslateKey(std::uint16_t key, KeyModifiers modifiers) override;
    void OnTimer(int timer) override;
    void OnSize(std::int32_t width, std::int32_t height) override;
    void OnDestroy() override;

    // The abstract tree.
    bool IsValidItem(TreeItem item) override { return tree.GetItems().IsValid(item); }
    VUnicodeString GetItemText(TreeItem item) override { return tree.GetItems().GetText(item); }
    void SetItemText(TreeItem item, const VUnicodeString& text) override { tree.GetItems().SetText(item, text); }
    TreeItem GetRootItem() override { return tree.GetItems().GetFirstChild(TreeItem::kNone); }
    TreeItem GetItemAfterRemoval(TreeItem item) override;
    TreeItem GetParentItem(TreeItem item) override { return tree.GetItems().GetParent(item); }
    TreeItem GetPrevSiblingItem(TreeItem item) override { return tree.GetItems().GetPreviousSibling(item); }
    SessionItemData* GetItemData(TreeItem item) override;
    TreeItem ItemFromPoint(VPoint point) override { return tree.ItemFromPoint(point); }
    bool IsItemExpanded(TreeItem item) override { return tree.GetItems().HasState(item, kTreeExpanded); }
    bool IsItemSelected(TreeItem item) override { return tree.GetItems().HasState(item, kTreeSelected); }
    bool ItemHasChildren(TreeItem item) override { return tree.GetItems().HasChildrenOrExpander(item); }
    void MarkExpandedOnce(TreeItem item) override { tree.GetItems().SetState(item, kTreeExpandedOnce, true); }
    void EnableConnect(bool button, bool toolbarButton) override;
    void EnableEditButtons(bool properties, bool cutCopy, bool canDelete) override;
    void PostPasteAvailable(bool isAvailable) override;
    void ExpandItem(TreeItem item) override { tree.SetExpanded(item, true); }
    TreeItem GetChildItem(TreeItem item, TreeItem& iterator) override;
    TreeItem GetNextSiblingItem(TreeItem& iterator) override;
    void DeleteAllItems() override { tree.GetItems().Clear(); }
    void DeleteItem(TreeItem item) override;
    void SelectItem(TreeItem item) override { tree.SelectItem(item); }
    void SetItemSelected(TreeItem item, bool isOn) override { tree.GetItems().SetState(item, kTreeSelected, isOn); }
    void SetItemDropHilite(TreeItem item, bool isOn) override { tree.GetItems().SetState(item, kTreeDropTarget, isOn); }
    void SetItemCutMark(TreeItem item, bool isOn) override { tree.GetItems().SetState(item, kTreeCut, isOn); }
    void ClearSelection() override { tree.ClearSelection(); }
    TreeItem InsertItem(TreeItem parent, TreePlace place, TreeItem after, const VUnicodeString& text,
                        SessionItemData* data) override;
    void SetItemHasChildren(TreeItem item) override { tree.GetItems().SetState(item, kTreeForcedExpander, true); }
    void EditLabel(TreeItem item) override;
    void RedrawTree() override;
    TreeItem HitTest(VPoint point) override { return tree.HitTest(point); }
    void DragLeave() override;
    bool DragEnter(VPoint point) override;
    void DragMove(VPoint point) override;
    bool GetItemRect(TreeItem item, VRectangle& rectangle) override;
    void SetInsertMark(TreeItem item, bool isBehind) override { tree.GetItems().SetInsertMark(item, isBehind); }
    int StartHoverTimer(unsigned milliseconds) override;
    void StopHoverTimer(int timer) override;

    VMultiSelTreeCtrl& GetTree() { return tree; }

    /// What a derived dialog lets start the sister application once the window is gone.
    enum class PendingLaunch : int { kNone = 293, kTerminal = 294, kFileTransfer = 295 };
    PendingLaunch pendingLaunchKind = PendingLaunch::kNone;
    VUnicodeString pendingLaunchCommand;

  private:
    friend class TreeOleDropTarget;

    // Events of the tree.
    void OnItemDeleted(void* data) override { delete static_cast<SessionItemData*>(data); }
    void OnTreeExpanding(TreeItem item) override;
    void OnTreeSelectionChanged() override { OnSelectionChanged(); }
    void OnTreeContextMenu(VPoint point) override;
    void OnTreeRename(TreeItem item) override { EditLabel(item); }
    void OnMouseDown(MouseButton, VPoint, KeyModifiers) override {}
    void OnDoubleClick(VPoint point) override { ConnectItemAt(point); }
    void OnKeyDown(std::uint16_t key, KeyModifiers modifiers) override;
    void OnText(const VUnicodeString&) override {}
    void OnBeginDrag(TreeItem item, VPoint point) override;
    bool OnBeginLabelEdit(TreeItem item) override { return BeginLabelEdit(item); }
    void OnEndLabelEdit(TreeItem item, const VUnicodeString* text) override { EndLabelEdit(item, text); }
    bool OnInfoTip(TreeItem item, VUnicodeString& text) override;
    DropEffect OnDragEnter(const VDragData& data, VPoint point, KeyModifiers modifiers) override {
        return dropTarget.OnDragEnter(data, point, modifiers);
    }
    DropEffect OnDragOver(const VDragData&, VPoint point, KeyModifiers modifiers) override {
        return dropTarget.OnDragOver(point, modifiers);
    }
    void OnDragLeave() override { dropTarget.OnDragLeave(); }
    bool OnDrop(const VDragData& data, VPoint point, DropEffect effect) override {
        return dropTarget.OnDrop(data, point, effect);
    }

    bool ToggleFolderByReturn();
    bool CanDeleteItems(const VArray<TreeItem>& items);

    // The window.
    void InitControls();
    void InitBrowseMode();
    void InitSize();
    void ApplyTreeFont();

    // The menu over the tree.
    void ShowContextMenuByKey();
    /// `point` is one of the tree.
    void ShowContextMenu(VPoint point);
    VPopupMenu MakeContextMenu(const VArray<TreeItem>& items);
    void FitLaunchEntries(VPopupMenu& menu, const VArray<TreeItem>& items);
    void FitFilterEntries(VPopupMenu& menu);

    VUnicodeString title;
    ConnectToolbar toolbar;
    VMultiSelTreeCtrl tree{*this};
    TreeOleDropTarget dropTarget{*this};
    bool beginsWithFind = false;
    int findTimer = 0;
    // The size of the window's inside at the last change; a width of 0: none yet.
    std::int32_t lastWidth = 0;
    std::int32_t lastHeight = 0;
};

}  // namespace connectdialog
