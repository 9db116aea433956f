// The heart of the connect dialog: the session tree as a user sees it and works with it, without a window.
#pragma once

#include <cstdint>
#include <functional>

#include "connectdialog/sessionitemdata.h"
#include "connectdialog/treetransferrecord.h"
#include "foundation/varray.h"
#include "foundation/vstringarray.h"
#include "foundation/vunicodestring.h"
#include "imports/dialogkit/dragdata.h"
#include "imports/dialogkit/vdialog.h"
#include "imports/dialogkit/vtreeitems.h"
#include "imports/globalconfig.h"
#include "profile/vwindowplacement.h"
#include "sessiondb/runningsessions.h"

namespace connectdialog {

struct ConnectDialogOptions {
    bool addSystemMenu = false;
    /// Sessions always open in a tab; the check box for it is hidden.
    bool tabAlways = false;
    /// The dialog picks sessions instead of connecting.
    bool browseMode = false;
    /// False renames the check box for tabs.
    bool tabsAvailable = true;
    /// Selected first in browse mode. Null: nothing needs to be selected, and several items may be picked.
    const VUnicodeString* initialPath = nullptr;
};

/// A view over the session database. The database owns what is stored and the user's order of it; this class owns what
/// is shown, where a new item goes, and which neighbour it names to the database so that both orders agree. Inside a
/// folder all folders come first, then all sessions.
///
/// It works on an abstract tree, which a derived class supplies: whatever has rows and states will do. Folders are all
/// in the tree from the start; the sessions of a folder come when it is first opened. A session that was
/// asked for stays with its item; a search keeps only the texts that it looked at.
class ConnectDialogBase : public VDialog {
  public:
    ConnectDialogBase(const ConnectDialogOptions& options, VWindow* parent);

    // The tree.

    /// Empties and refills the tree and restores the selection of the last time.
    void ReloadTree();
    void SetArrangement(SessionArrangement value);
    void RotateArrangement();
    void ToggleTerminalFilter();
    void ToggleTransferFilter();

    // Commands. Each acts on the selection; where that does not fit, nothing happens.

    void ConnectSelection();
    void ConnectInTerminal();
    void ConnectInTransfer();
    void ConnectInBoth();
    /// True when there is a session to connect to.
    bool ConnectQuick();
    void NewFolder();
    void NewSession();
    void BeginRename();
    void EditProperties();
    void DeleteSelection();
    void PutOnClipboard(bool isCut);
    void PasteFromClipboard();
    void CreateShortcutForSelection();
    void FindFirst();
    void FindNext();

    // What the dialog has for the host.

    const VArray<VRef<ISessionConfig>>& GetChosenConfigs() const { return chosenConfigs; }
    const VStringArray& GetChosenPaths() const { return chosenPaths; }
    /// Whether the chosen sessions go into tabs.
    bool IsOpenInTab() const;

  protected:
    // The abstract tree. kNone stands for no item, in both directions.

    virtual bool IsValidItem(TreeItem item) = 0;
    virtual VUnicodeString GetItemText(TreeItem item) = 0;
    virtual void SetItemText(TreeItem item, const VUnicodeString& text) = 0;
    /// The first top-level item.
    virtual TreeItem GetRootItem() = 0;
    /// The previous sibling, else the parent, else the root.
    virtual TreeItem GetItemAfterRemoval(TreeItem item) = 0;
    virtual TreeItem GetParentItem(TreeItem item) = 0;
    virtual TreeItem GetPrevSiblingItem(TreeItem item) = 0;
    virtual SessionItemData* GetItemData(TreeItem item) = 0;
    /// The item whose icon or label is under the point.
    virtual TreeItem ItemFromPoint(VPoint point) = 0;
    virtual bool IsItemExpanded(TreeItem item) = 0;
    virtual bool IsItemSelected(TreeItem item) = 0;
    /// A child, or an expander without one.
    virtual bool ItemHasChildren(TreeItem item) = 0;
    /// No expanding event comes for the item any more.
    virtual void MarkExpandedOnce(TreeItem item) = 0;
    virtual void EnableConnect(bool button, bool toolbarButton) = 0;
    virtual void EnableEditButtons(bool properties, bool cutCopy, bool canDelete) = 0;
    virtual void PostPasteAvailable(bool isAvailable) = 0;
    /// Raises the expanding event where the item was never expanded.
    virtual void ExpandItem(TreeItem item) = 0;
    /// Begin and continue a walk over the children of an item.
    virtual TreeItem GetChildItem(TreeItem item, TreeItem& iterator) = 0;
    virtual TreeItem GetNextSiblingItem(TreeItem& iterator) = 0;
    /// Both raise the deleted event for each item.
    virtual void DeleteAllItems() = 0;
    virtual void DeleteItem(TreeItem item) = 0;
    /// Makes it the caret and the only selected item, in sight; the selection event follows. kNone: no caret.
    virtual void SelectItem(TreeItem item) = 0;
    virtual void SetItemSelected(TreeItem item, bool isOn) = 0;
    virtual void SetItemDropHilite(TreeItem item, bool isOn) = 0;
    virtual void SetItemCutMark(TreeItem item, bool isOn) = 0;
    virtual void ClearSelection() = 0;
    /// `parent` kNone means the top level. Takes `data` over.
    virtual TreeItem InsertItem(TreeItem parent, TreePlace place, TreeItem after, const VUnicodeString& text,
                                SessionItemData* data) = 0;
    /// Shows an expander although no child exists yet.
    virtual void SetItemHasChildren(TreeItem item) = 0;
    /// Takes the focus and lets the user edit the label.
    virtual void EditLabel(TreeItem item) = 0;
    virtual void RedrawTree() = 0;
    /// Any item in whose row the point lies.
    virtual TreeItem HitTest(VPoint point) = 0;
    virtual void DragLeave() = 0;
    /// On failure: false.
    virtual bool DragEnter(VPoint point) = 0;
    virtual void DragMove(VPoint point) = 0;
    /// The item's row; false when it does not show.
    virtual bool GetItemRect(TreeItem item, VRectangle& rectangle) = 0;
    /// The line between rows; kNone takes it away.
    virtual void SetInsertMark(TreeItem item, bool isBehind) = 0;
    virtual int StartHoverTimer(unsigned milliseconds) = 0;
    virtual void StopHoverTimer(int timer) = 0;
    /// The first child that is no folder.
    virtual TreeItem FirstSessionChild(TreeItem item);

    // Neighbours that a test replaces.

    virtual RunningSessions AskRunningSessions();
    /// CreateDesktopShortcut over this window.
    virtual bool MakeShortcut(const VUnicodeString& arguments, const VUnicodeString& label);
    /// Runs the wizard for a new session. False when there is none, and then the options dialog is used; else `result`
    /// is the wizard's, and `useWizard` whether the user finished in it and wants it again.
    virtual bool RunNewSessionWizard(ISessionConfig& config, std::int64_t& result, bool& useWizard);
    virtual std::int64_t RunQuickConnect(VRef<ISessionConfig>& config, const VUnicodeString& folder);

    // Events of the tree.

    /// An item expands that was not expanded once.
    void LoadFolderSessions(TreeItem folder);
    /// The selection changed.
    void OnSelectionChanged();
    /// False forbids it.
    bool BeginLabelEdit(TreeItem item);
    /// `text` is null when the edit was cancelled.
    void EndLabelEdit(TreeItem item, const VUnicodeString* text);
    void ConnectItemAt(VPoint point);
    /// The block for a drag of the item. False when it cannot be dragged.
    bool BeginDragFromItem(TreeItem item, VDragData& data);
    DropEffect OnDragEntered(const VDragData& data, VPoint point, KeyModifiers modifiers);
    DropEffect OnDraggedOver(VPoint point, KeyModifiers modifiers);
    void OnDragLeft();
    bool OnDropped(const VDragData& data, VPoint point, DropEffect effect);
    void OnHoverTimer();

    // What else a window needs.

    bool OnCommand(int command) override;
    /// To be called while the tree is still there.
    void SaveTreeState();
    VRef<ISessionConfig> GetItemConfig(TreeItem item);
    bool IsFolderItem(TreeItem item);
    VUnicodeString GetItemPath(TreeItem item);
    bool CanConnectSide(const VArray<TreeItem>& items, bool transferSide);

    enum class Collect : std::uint8_t {
        kSelectedItems,        ///< every selected item, in tree order
        kSelectedTopItems,     ///< not looking below a selected folder
        kSelectedForDelete,    ///< the same, but the root hides nothing
        kSessionsInSelection,  ///< sessions that are selected or under a selected folder; loads what is not loaded
    };
    VArray<TreeItem> CollectSelection(Collect mode);
    /// Whether kSessionsInSelection would find any.
    bool HasSessionInSelection();

    // The state, in the order in which it is told to derived classes.

    bool addSystemMenu;
    bool tabAlways;
    bool browseMode;
    bool tabsAvailable;
    bool browseWithoutPath;
    SessionArrangement arrangement;
    VUnicodeString initialPath;
    VArray<VRef<ISessionConfig>> chosenConfigs;
    VStringArray chosenPaths;
    bool editingLabel = false;
    bool dragAccepted = false;  ///< the data over the tree is ours
    bool showDescriptions;
    bool showTerminalSessions;
    bool showTransferSessions;
    bool pasteAvailable = false;

  private:
    /// While it lives, the enable rules wait; they run once at its end if something asked for them.
    class QuietSelection;
    friend class QuietSelection;
    struct Command {
        int id;
        void (*run)(ConnectDialogBase& dialog);
    };
    static const Command kCommands[];

    // The tree model.
    void FillFolder(TreeItem top, const VUnicodeString& topPath);
    void AddSessions(TreeItem folder, const VStringArray& names, const VUnicodeString& path);
    TreeItem AddFolderItem(TreeItem parent, const VUnicodeString& name, TreePlace place, TreeItem after);
    TreeItem AddFolderItemAndChildren(TreeItem parent, const VUnicodeString& name, TreePlace place, TreeItem after);
    TreeItem AddSessionItem(TreeItem parent, const VUnicodeString& name, TreePlace place, TreeItem after);
    TreeItem FindItemByPath(const VUnicodeString& path, bool expandLast);
    TreeItem FindChild(TreeItem parent, std::u16string_view name);
    VUnicodeString GetItemParentPath(TreeItem item);
    TreeItem GetFolderOf(TreeItem item);
    /// Depth first: the first child (unless it is not to be looked at), the next sibling, or that of an ancestor.
    TreeItem GetNextInWalk(TreeItem item, bool intoChildren);
    bool IsInside(TreeItem item, TreeItem ancestor);
    /// Which folders from this one down are open, to be kept with them and shown again.
    void SaveExpansion(TreeItem top);
    void ReapplyExpansion(TreeItem top);
    void RunEnableRules();
    void RunConnectRule(const VArray<TreeItem>& items);
    bool IsUsableHere(ISessionConfig& config);

    // Where the next item goes, in the tree and in the database.
    void StartPosition();
    void PositionFolderSorted(TreeItem parent, const VUnicodeString& name);
    void PositionSessionSorted(TreeItem parent, const VUnicodeString& name);
    void PositionBehindLastFolder(TreeItem parent);
    void PositionAtEnd();
    void PositionBefore(TreeItem item, bool isSession);
    void PositionFirstInRoot();
    void PositionBehind(TreeItem item);

    // Launching.
    bool PrepareForConnect(TreeItem item, bool& canTerminal, bool& canTransfer);
    bool FillInHostName(ISessionConfig& config);
    void CollectChosenPaths();
    void HandOver(const VArray<TreeItem>& list);
    VUnicodeString GetLaunchCommand(const VArray<TreeItem>& list);
    /// The one session of the selection, ready to be connected to; else an empty list.
    VArray<TreeItem> GetOnlySession();

    // Editing.
    TreeItem GetTargetFolder();
    void StoreNewSession(TreeItem target, ISessionConfig& config);
    void FinishFreshFolder(TreeItem item, const VUnicodeString& wanted);
    void RenameItem(TreeItem item, const VUnicodeString& path, const VUnicodeString& newName);
    /// Whether the user wants to change the options of so many sessions at once.
    bool ConfirmManyProperties(std::uint64_t count);
    void ShowRenamed(TreeItem item, const VUnicodeString& path, ISessionConfig& config);
    /// In the user's order it keeps its place, else it goes to the reference.
    bool RenameStored(const VUnicodeString& path, const VUnicodeString& newName);
    void ShowRenameFailure(const VUnicodeString& path, const VUnicodeString& newName);
    bool CheckInUse(const VArray<TreeItem>& items);
    void RemovePlaceholder(TreeItem item);
    bool IsPlaceholder(TreeItem item);
    void RemoveItem(TreeItem item);
    void ReplaceItem(TreeItem item, TreeItem replacement);
    void ShowFailure(const char16_t* text);

    // Clipboard and drag.
    bool ReadClipboard(TreeTransferRecord& record);
    TreeItem GetLiveSource(const TreeTransferRecord& record);
    void PositionForPaste(TreeItem source, TreeItem target);
    void SetPasteAvailable(bool isAvailable);
    void ForgetCutItem();
    bool TransferNode(TreeItem source, TreeItem destination, bool isMove);
    bool ReorderInFolder(TreeItem source, TreeItem parent);
    bool CopyNode(TreeItem folder, TreeItem source, bool isMove);
    void SelectPasted(TreeItem item);
    DropEffect DragOverSorted(VPoint point, KeyModifiers modifiers);
    DropEffect DragOverManual(VPoint point, KeyModifiers modifiers);
    bool MarkManualTarget(TreeItem item, int zone);
    int GetDropZone(TreeItem item, VPoint point);
    bool IsDragSourceOrInside(TreeItem item);
    void StopHover();
    void ClearDropMarks();
    TreeItem PositionForDrop(TreeItem target, VPoint point);

    // Find.
    TreeItem SearchOn();
    TreeItem WalkNext();
    bool MatchesFind(TreeItem item);

    TreePlace insertMode = TreePlace::kLast;
    TreeItem insertAfter = TreeItem::kNone;
    VUnicodeString referenceName;          ///< the neighbour that is named to the database
    bool insertBehindReference = true;     ///< else before it
    bool freshFolder = false;              ///< the label edit names a new folder that the database does not have yet
    TreeItem freshItem = TreeItem::kNone;  ///< that folder
    TreeItem cutItem = TreeItem::kNone;
    bool openInTabRequested = false;
    VUnicodeString lastPastedPath;
    TreeItem dragSourceItem = TreeItem::kNone;
    bool dragSourceIsFolder = false;
    TreeItem dragHoverItem = TreeItem::kNone;
    DropEffect dragEffect = DropEffect::kNone;
    int dragZone = 1;
    int hoverTimer = 0;
    VPoint hoverPoint;
    TreeItem findCurrent = TreeItem::kNone;
    bool findActive = false;
    int quietDepth = 0;
    bool enableRulesWait = false;
};

}  // namespace connectdialog
