// What holds the parts together: the state at the start, the commands, and what is enabled.
#include "connectdialog/connectdialogbase.h"

#include "imports/configpanels.h"
#include "imports/dialogkit/vmessagebox.h"
#include "imports/hostcallbacks.h"
#include "resources/connectcommands.h"
#include "resources/dialogids.h"

namespace connectdialog {

namespace {

constexpr unsigned kHelpContents = 11;

SessionArrangement StoredArrangement(const GlobalConfig& global) {
    return static_cast<SessionArrangement>(global.sessionArrangementMode.Get());
}

}  // namespace

ConnectDialogBase::ConnectDialogBase(const ConnectDialogOptions& options, VWindow* parent)
    : VDialog(ConnectDialogIds::kDialog, parent),
      addSystemMenu(options.addSystemMenu),
      tabAlways(options.tabAlways),
      browseMode(options.browseMode),
      tabsAvailable(options.tabsAvailable),
      browseWithoutPath(options.browseMode && options.initialPath == nullptr) {
    if (options.initialPath != nullptr) initialPath = *options.initialPath;
    const VRef<GlobalConfig> global = FetchGlobalConfig();
    arrangement = StoredArrangement(*global);
    showDescriptions = global->showDescriptions.Get();
    showTerminalSessions = global->showTerminalSessions.Get();
    showTransferSessions = global->showTransferSessions.Get();
}

bool ConnectDialogBase::IsOpenInTab() const {
    return FetchGlobalConfig()->openInTab.Get() || tabAlways || openInTabRequested;
}

const ConnectDialogBase::Command ConnectDialogBase::kCommands[] = {
    {ConnectDialogIds::kConnect, [](ConnectDialogBase& d) { d.ConnectSelection(); }},
    {ConnectCommands::kConnect, [](ConnectDialogBase& d) { d.ConnectSelection(); }},
    {ConnectCommands::kOpenInTab,
     [](ConnectDialogBase& d) {
         d.openInTabRequested = true;
         d.ConnectSelection();
     }},
    {ConnectCommands::kConnectInTerminal, [](ConnectDialogBase& d) { d.ConnectInTerminal(); }},
    {ConnectCommands::kConnectInTransfer, [](ConnectDialogBase& d) { d.ConnectInTransfer(); }},
    {ConnectCommands::kConnectInBoth, [](ConnectDialogBase& d) { d.ConnectInBoth(); }},
    {ConnectCommands::kQuickConnect,
     [](ConnectDialogBase& d) {
         if (d.ConnectQuick()) d.EndDialog(kDialogAccepted);
     }},
    {ConnectCommands::kMenuQuickConnect, [](ConnectDialogBase& d) { d.OnCommand(ConnectCommands::kQuickConnect); }},
    {ConnectCommands::kBarNewSession, [](ConnectDialogBase& d) { d.NewSession(); }},
    {ConnectCommands::kNewSession, [](ConnectDialogBase& d) { d.NewSession(); }},
    {ConnectCommands::kBarNewFolder, [](ConnectDialogBase& d) { d.NewFolder(); }},
    {ConnectCommands::kNewFolder, [](ConnectDialogBase& d) { d.NewFolder(); }},
    {ConnectCommands::kBarProperties, [](ConnectDialogBase& d) { d.EditProperties(); }},
    {ConnectCommands::kProperties, [](ConnectDialogBase& d) { d.EditProperties(); }},
    {ConnectCommands::kBarDelete, [](ConnectDialogBase& d) { d.DeleteSelection(); }},
    {ConnectCommands::kDelete, [](ConnectDialogBase& d) { d.DeleteSelection(); }},
    {ConnectCommands::kRename, [](ConnectDialogBase& d) { d.BeginRename(); }},
    {ConnectCommands::kBarCut, [](ConnectDialogBase& d) { d.PutOnClipboard(true); }},
    {ConnectCommands::kCut, [](ConnectDialogBase& d) { d.PutOnClipboard(true); }},
    {ConnectCommands::kBarCopy, [](ConnectDialogBase& d) { d.PutOnClipboard(false); }},
    {ConnectCommands::kCopy, [](ConnectDialogBase& d) { d.PutOnClipboard(false); }},
    {ConnectCommands::kBarPaste, [](ConnectDialogBase& d) { d.PasteFromClipboard(); }},
    {ConnectCommands::kPaste, [](ConnectDialogBase& d) { d.PasteFromClipboard(); }},
    {ConnectCommands::kBarShortcut, [](ConnectDialogBase& d) { d.CreateShortcutForSelection(); }},
    {ConnectCommands::kShortcut, [](ConnectDialogBase& d) { d.CreateShortcutForSelection(); }},
    {ConnectCommands::kFind, [](ConnectDialogBase& d) { d.FindFirst(); }},
    {ConnectCommands::kFindNext, [](ConnectDialogBase& d) { d.FindNext(); }},
    {ConnectCommands::kShowDescriptions,
     [](ConnectDialogBase& d) {
         const VRef<GlobalConfig> global = FetchGlobalConfig();
         VProfile<bool>& shown = global->showDescriptions;
         shown.Set(!shown.Get());
         d.showDescriptions = shown.Get();
     }},
    {ConnectCommands::kShowTransferSessions, [](ConnectDialogBase& d) { d.ToggleTransferFilter(); }},
    {ConnectCommands::kShowTerminalSessions, [](ConnectDialogBase& d) { d.ToggleTerminalFilter(); }},
    {ConnectCommands::kArrangeAlphabetically,
     [](ConnectDialogBase& d) { d.SetArrangement(SessionArrangement::kAlphabetical); }},
    {ConnectCommands::kArrangeLogically,
     [](ConnectDialogBase& d) { d.SetArrangement(SessionArrangement::kLogical); }},
    {ConnectCommands::kArrangeManually, [](ConnectDialogBase& d) { d.SetArrangement(SessionArrangement::kManual); }},
    {ConnectCommands::kRotateArrangement, [](ConnectDialogBase& d) { d.RotateArrangement(); }},
    {ConnectCommands::kHelp,
     [](ConnectDialogBase& d) {
         if (GetHostCallbacks().help != nullptr) GetHostCallbacks().help(&d, kHelpContents, 0);
     }},
};

bool ConnectDialogBase::OnCommand(int command) {
    for (const Command& row : kCommands) {
        if (row.id != command) continue;
        row.run(*this);
        return true;
    }
    return VDialog::OnCommand(command);
}

void ConnectDialogBase::OnSelectionChanged() {
    enableRulesWait = quietDepth > 0;
    if (!enableRulesWait) RunEnableRules();
}

void ConnectDialogBase::RunEnableRules() {
    const VArray<TreeItem> items = CollectSelection(Collect::kSelectedItems);
    bool rootSelected = false;
    for (const TreeItem item : items) rootSelected = rootSelected || item == GetRootItem();
    const std::uint64_t count = items.GetCount();
    EnableEditButtons(HasSessionInSelection(), count == 1 && !rootSelected, count > 0 && !rootSelected);
    RunConnectRule(items);
}

bool ConnectDialogBase::IsUsableHere(ISessionConfig& config) {
    switch (GetCurrentAppProductID()) {
        case AppKind::kHalden:
        case AppKind::kNorHalden:
            return config.IsConnectable();
        case AppKind::kTessaly:
            return config.IsTransferConnectable();
        default:
            return false;
    }
}

void ConnectDialogBase::RunConnectRule(const VArray<TreeItem>& items) {
    bool usable = false;
    for (const TreeItem item : items) {
        const VRef<ISessionConfig> config = GetItemConfig(item);
        usable = IsFolderItem(item) || (config && IsUsableHere(*config));
        if (usable) break;
    }
    const bool isOneSession = items.GetCount() == 1 && !IsFolderItem(items[0]);
    EnableConnect(usable && (!browseMode || browseWithoutPath || isOneSession), usable && !browseMode);
}

/// Loads only as much as it takes to find one.
bool ConnectDialogBase::HasSessionInSelection() {
    TreeItem inside = TreeItem::kNone;  // the selected folder whose inside is walked
    for (TreeItem item = GetRootItem(); item != TreeItem::kNone; item = GetNextInWalk(item, true)) {
        if (inside != TreeItem::kNone && !IsInside(item, inside)) inside = TreeItem::kNone;
        if (inside == TreeItem::kNone && !IsItemSelected(item)) continue;
        if (!IsFolderItem(item)) return true;
        LoadFolderSessions(item);
        if (inside == TreeItem::kNone) inside = item;
    }
    return false;
}

void ConnectDialogBase::ShowFailure(const char16_t* text) {
    VMessageBox(this, text, kBoxWarning);
}

}  // namespace connectdialog
