// The menu that pops up over the tree.
#include "connectdialog/ui/connectdialog.h"
#include "imports/configpanels.h"
#include "imports/dialogkit/appname.h"
#include "imports/dialogkit/idialogkit.h"
#include "imports/dialogkit/vpopupmenu.h"
#include "resources/connectcommands.h"
#include "resources/connectmenus.h"
#include "resources/dialogids.h"

namespace connectdialog {

using namespace ConnectCommands;

namespace {

/// So far inside the label a menu pops up that a key asked for.
constexpr std::int32_t kInsideLabel = 4;

// How many entries at the front connect, which browsing does not.
constexpr int kConnectEntriesOfSession = 4;
constexpr int kConnectEntriesOfFolder = 3;
constexpr int kConnectEntriesOfMultiple = 2;

VPopupMenu MakeMenu(const ConnectPopup& popup) {
    VPopupMenu arrangements;
    for (const int command : kPopupArrangements) arrangements.Add(command, GetMenuLabel(command));
    VPopupMenu menu;
    for (const int command : popup.commands) {
        if (command == kMenuSeparator)
            menu.AddSeparator();
        else if (command == kMenuArrangements)
            menu.AddSubMenu(popup.arrangementsLabel, arrangements);
        else
            menu.Add(command, GetMenuLabel(command));
    }
    return menu;
}

void RemoveFirst(VPopupMenu& menu, int count) {
    while (count-- > 0) menu.RemoveAt(0);
}

}  // namespace

void ConnectDialog::OnTreeContextMenu(VPoint point) {
    if (HitTest(point) != TreeItem::kNone) ShowContextMenu(point);
}

void ConnectDialog::ShowContextMenuByKey() {
    const VArray<TreeItem> items = CollectSelection(Collect::kSelectedItems);
    VRectangle label;
    const TreeItem item = items.IsEmpty() ? GetRootItem() : items[0];
    tree.GetView()->EnsureVisible(item);
    if (!tree.GetView()->GetItemRectangle(item, true, label)) return;
    ShowContextMenu({label.left + kInsideLabel, label.top + kInsideLabel});
}

void ConnectDialog::ShowContextMenu(VPoint point) {
    IDialogKit* kit = GetDialogKit();
    const VArray<TreeItem> items = CollectSelection(Collect::kSelectedItems);
    if (items.IsEmpty() || kit == nullptr) return;
    const VPopupMenu menu = MakeContextMenu(items);
    const int command = kit->TrackPopupMenu(this, menu, GetWindow()->ToScreen(ConnectDialogIds::kTree, point));
    if (command != 0 && !HasEnded()) OnCommand(command);
}

VPopupMenu ConnectDialog::MakeContextMenu(const VArray<TreeItem>& items) {
    const bool isOne = items.GetCount() == 1;
    const bool isSession = isOne && !IsFolderItem(items[0]);
    VPopupMenu menu = MakeMenu(!isOne ? kPopupMultiple : isSession ? kPopupSession : kPopupFolder);
    if (browseMode)
        RemoveFirst(menu, !isOne      ? kConnectEntriesOfMultiple
                          : isSession ? kConnectEntriesOfSession
                                      : kConnectEntriesOfFolder);
    if (isSession)
        FitLaunchEntries(menu, items);
    else if (!IsTerminalHost())
        menu.SetText(kOpenInTab, kConnectSessionLabel);
    if (isOne) {
        for (const int command : {kRename, kCut, kCopy}) menu.Enable(command, items[0] != GetRootItem());
        menu.Enable(kPaste, pasteAvailable);
        FitFilterEntries(menu);
    }
    menu.Enable(kDelete, CanDeleteItems(items));
    menu.Check(kArrangeAlphabetically, arrangement == SessionArrangement::kAlphabetical);
    menu.Check(kArrangeLogically, arrangement == SessionArrangement::kLogical);
    menu.Check(kArrangeManually, arrangement == SessionArrangement::kManual);
    menu.Check(kShowDescriptions, showDescriptions);
    menu.Enable(kProperties, HasSessionInSelection());
    return menu;
}

void ConnectDialog::FitLaunchEntries(VPopupMenu& menu, const VArray<TreeItem>& items) {
    if (!IsIntegrated()) {
        menu.Remove(kConnectInBoth);
        menu.Remove(IsTerminalHost() ? kConnectInTransfer : kConnectInTerminal);
        return;
    }
    const bool canTerminal = CanConnectSide(items, false);
    const bool canTransfer = CanConnectSide(items, true);
    menu.Enable(kConnectInTerminal, canTerminal);
    menu.Enable(kConnectInTransfer, canTransfer);
    menu.Enable(kConnectInBoth, canTerminal && canTransfer);
}

/// Each host can show the sessions that are only for the other.
void ConnectDialog::FitFilterEntries(VPopupMenu& menu) {
    const bool hasFilter = !addSystemMenu && IsIntegrated();
    menu.Check(kShowTransferSessions, showTransferSessions);
    menu.Check(kShowTerminalSessions, showTerminalSessions);
    if (!hasFilter || !IsTerminalHost()) menu.Remove(kShowTransferSessions);
    if (!hasFilter || IsTerminalHost()) menu.Remove(kShowTerminalSessions);
}

}  // namespace connectdialog
