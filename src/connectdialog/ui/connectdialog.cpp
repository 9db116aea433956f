#include "connectdialog/ui/connectdialog.h"

#include <utility>

#include "foundation/textchecks.h"
#include "imports/configpanels.h"
#include "imports/dialogkit/idialogkit.h"
#include "imports/dialogkit/vpopupmenu.h"
#include "resources/connectcommands.h"
#include "resources/dialogids.h"

namespace connectdialog {

namespace {

enum Image : std::uint8_t { kImageOpenFolder = 0, kImageFolder = 1, kImageSession = 2 };

constexpr std::size_t kLongestTip = 1023;
constexpr std::u16string_view kEllipsis = u"...";

}  // namespace

ConnectDialog::ConnectDialog(const VUnicodeString& title, const ConnectDialogOptions& options, VWindow* parent)
    : ConnectDialogBase(options, parent), title(title) {
    SetAccelerators(LoadAcceleratorTable(kConnectAcceleratorsId));
}

ConnectDialog::~ConnectDialog() {
    Destroy();
}

void ConnectDialog::OnInitDialog() {
    ConnectDialogBase::OnInitDialog();
    SetTitle(title);
    InitControls();
    toolbar.CreateBar(*GetWindow(), browseMode);
    PostPasteAvailable(false);
    tree.Attach(*GetWindow(), ConnectDialogIds::kTree);
    InitSize();
    if (browseMode) InitBrowseMode();
    if (tabAlways) ShowControl(ConnectDialogIds::kOpenInTab, false);
    ApplyTreeFont();
    ReloadTree();
    if (beginsWithFind) findTimer = GetWindow()->StartTimer(1);
}

void ConnectDialog::InitControls() {
    const VRef<GlobalConfig> global = FetchGlobalConfig();
    SetControlChecked(ConnectDialogIds::kShowOnStartup, global->connectDialogOnStartup.Get());
    if (global->tabMode.Get() != 0 && global->tabsForced.Get()) {
        EnableControl(ConnectDialogIds::kOpenInTab, false);
        global->openInTab.Set(true);
    }
    SetControlChecked(ConnectDialogIds::kOpenInTab, global->openInTab.Get());
    if (!tabsAvailable) SetControlText(ConnectDialogIds::kOpenInTab, u"&Open in a tiled window"_v);
}

void ConnectDialog::InitBrowseMode() {
    SetControlText(ConnectDialogIds::kConnect, u"OK"_v);
    SetControlText(kIdCancel, u"Cancel"_v);
    ShowControl(ConnectDialogIds::kShowOnStartup, false);
}

void ConnectDialog::OnDestroy() {
    if (tree.GetView() != nullptr) tree.GetView()->EndLabelEdit(false);
    // Before the settings are saved with the state of the tree.
    FetchGlobalConfig()->connectDialogPlacement.Set(GetWindow()->GetPlacement());
    SaveTreeState();
    if (pendingLaunchKind == PendingLaunch::kTerminal) LaunchTerminalApp(this, pendingLaunchCommand.GetData());
    if (pendingLaunchKind == PendingLaunch::kFileTransfer) LaunchFileTransferApp(this, pendingLaunchCommand.GetData());
    lastWidth = 0;
    toolbar.Detach();
    tree.Detach();
}

bool ConnectDialog::OnCommand(int command) {
    tree.ForgetRename();
    const VRef<GlobalConfig> global = FetchGlobalConfig();
    if (command == ConnectDialogIds::kShowOnStartup) {
        const bool isShown = IsControlChecked(command);
        global->connectDialogOnStartup.Set(isShown);
        if (isShown) global->quickConnectOnStartup.Set(false);
        return true;
    }
    if (command == ConnectDialogIds::kOpenInTab) {
        global->openInTab.Set(IsControlChecked(command));
        return true;
    }
    return ConnectDialogBase::OnCommand(command);
}

bool ConnectDialog::PreTranslateKey(std::uint16_t key, KeyModifiers modifiers) {
    if (key == kKeyReturn && modifiers == 0 && ToggleFolderByReturn()) return true;
    if (key == kKeyF1 && modifiers == 0) return OnCommand(ConnectCommands::kHelp);  // else only the mouse reaches it
    return ConnectDialogBase::PreTranslateKey(key, modifiers);
}

/// Return opens and closes a folder instead of pressing Connect. A button that has the focus is pressed all the same.
bool ConnectDialog::ToggleFolderByReturn() {
    if (GetWindow()->GetFocus() != ConnectDialogIds::kTree) return false;
    const VArray<TreeItem> items = CollectSelection(Collect::kSelectedItems);
    if (items.GetCount() != 1 || !IsFolderItem(items[0])) return false;
    if (ItemHasChildren(items[0])) tree.SetExpanded(items[0], !IsItemExpanded(items[0]));
    return true;
}

void ConnectDialog::OnTimer(int timer) {
    if (findTimer != 0 && timer == findTimer) {
        GetWindow()->StopTimer(std::exchange(findTimer, 0));
        return FindFirst();
    }
    if (!tree.OnTimer(timer)) OnHoverTimer();
}

TreeItem ConnectDialog::GetItemAfterRemoval(TreeItem item) {
    VTreeItems& items = tree.GetItems();
    if (items.GetPreviousSibling(item) != TreeItem::kNone) return items.GetPreviousSibling(item);
    return items.GetParent(item) != TreeItem::kNone ? items.GetParent(item) : GetRootItem();
}

SessionItemData* ConnectDialog::GetItemData(TreeItem item) {
    return static_cast<SessionItemData*>(tree.GetItems().GetData(item));
}

void ConnectDialog::EnableConnect(bool button, bool toolbarButton) {
    EnableControl(ConnectDialogIds::kConnect, button);
    toolbar.EnableButton(ConnectCommands::kConnect, toolbarButton);
}

void ConnectDialog::EnableEditButtons(bool properties, bool cutCopy, bool canDelete) {
    toolbar.EnableButton(ConnectCommands::kBarProperties, properties);
    toolbar.EnableButton(ConnectCommands::kBarCut, cutCopy);
    toolbar.EnableButton(ConnectCommands::kBarCopy, cutCopy);
    toolbar.EnableButton(ConnectCommands::kBarDelete, canDelete);
}

void ConnectDialog::PostPasteAvailable(bool isAvailable) {
    toolbar.EnableButton(ConnectCommands::kBarPaste, isAvailable);
}

TreeItem ConnectDialog::GetChildItem(TreeItem item, TreeItem& iterator) {
    return iterator = tree.GetItems().GetFirstChild(item);
}
TreeItem ConnectDialog::GetNextSiblingItem(TreeItem& iterator) {
    return iterator = tree.GetItems().GetNextSibling(iterator);
}

void ConnectDialog::DeleteItem(TreeItem item) {
    VTreeItems& items = tree.GetItems();
    const TreeItem parent = items.GetParent(item);
    items.Remove(item);
    // A folder whose last entry went has nothing to open any more; one that was never opened may have sessions.
    if (items.GetFirstChild(parent) != TreeItem::kNone || !items.HasState(parent, kTreeExpandedOnce)) return;
    items.SetState(parent, kTreeForcedExpander, false);
    items.SetState(parent, kTreeExpanded, false);
}

TreeItem ConnectDialog::InsertItem(TreeItem parent, TreePlace place, TreeItem after, const VUnicodeString& text,
                                   SessionItemData* data) {
    const bool isFolder = data->kind == EntryKind::kFolder;
    const TreeItem item = tree.GetItems().Insert(parent, place, after, text, isFolder ? kImageFolder : kImageSession,
                                                 isFolder ? kImageOpenFolder : kImageSession, data);
    if (item == TreeItem::kNone) delete data;
    return item;
}

void ConnectDialog::EditLabel(TreeItem item) {
    if (tree.GetView() != nullptr) tree.GetView()->BeginLabelEdit(item);
}

void ConnectDialog::RedrawTree() {
    if (tree.GetView() != nullptr) tree.GetView()->Redraw();
}

void ConnectDialog::DragLeave() {
    if (tree.GetView() != nullptr) tree.GetView()->LeaveDragImage();
}
bool ConnectDialog::DragEnter(VPoint point) {
    return tree.GetView() != nullptr && tree.GetView()->EnterDragImage(point);
}
void ConnectDialog::DragMove(VPoint point) {
    if (tree.GetView() != nullptr) tree.GetView()->MoveDragImage(point);
}

bool ConnectDialog::GetItemRect(TreeItem item, VRectangle& rectangle) {
    return tree.GetView() != nullptr && tree.GetView()->GetItemRectangle(item, false, rectangle);
}

int ConnectDialog::StartHoverTimer(unsigned milliseconds) {
    return GetWindow() != nullptr ? GetWindow()->StartTimer(milliseconds) : 0;
}
void ConnectDialog::StopHoverTimer(int timer) {
    if (GetWindow() != nullptr) GetWindow()->StopTimer(timer);
}

void ConnectDialog::OnTreeExpanding(TreeItem item) {
    const VWaitCursor wait;
    LoadFolderSessions(item);
}

bool ConnectDialog::CanDeleteItems(const VArray<TreeItem>& items) {
    return !items.IsEmpty() && items[0] != GetRootItem();  // the root comes first where it is selected
}

void ConnectDialog::OnKeyDown(std::uint16_t key, KeyModifiers modifiers) {
    const bool wantsMenu = key == kKeyMenu || (key == kKeyF10 && (modifiers & Accelerator::kShift) != 0);
    if (wantsMenu) return ShowContextMenuByKey();
    if (key == kKeyDelete && CanDeleteItems(CollectSelection(Collect::kSelectedItems))) DeleteSelection();
}

void ConnectDialog::OnBeginDrag(TreeItem item, VPoint) {
    VDragData data;
    if (!BeginDragFromItem(item, data)) return;
    tree.GetView()->RunDrag(item, data);
    if (dragAccepted && !HasEnded()) OnDragLeft();  // it never came over the tree
}

bool ConnectDialog::OnInfoTip(TreeItem item, VUnicodeString& text) {
    if (!showDescriptions || editingLabel || dragAccepted) return false;
    const VRef<ISessionConfig> config = GetItemConfig(item);
    if (!config) return false;
    config->GetDisplayText(text);
    if (text.GetLength() > kLongestTip) text = text.Left(kLongestTip - kEllipsis.size()) + VUnicodeString(kEllipsis);
    return !text.IsEmpty();
}

}  // namespace connectdialog
