// Turning the selection into work for a host.
#include "config/connectconfigptr.h"
#include "connectdialog/connectdialogbase.h"
#include "connectdialog/multiconnectwarningdialog.h"
#include "imports/configpanels.h"
#include "imports/connectconfig.h"
#include "imports/hostcallbacks.h"
#include "quickconnect/hostnameprompt.h"
#include "quickconnect/quickconnect.h"
#include "sessiondb/sessiontree.h"

namespace connectdialog {

namespace {

bool IsTerminalProduct() {
    const AppKind kind = GetCurrentAppProductID();
    return kind == AppKind::kHalden || kind == AppKind::kNorHalden;
}
bool IsTransferProduct() {
    return GetCurrentAppProductID() == AppKind::kTessaly;
}

}  // namespace

/// Asks for the host where nothing else is missing, and keeps the answer in the session. False when the user gave up.
bool ConnectDialogBase::FillInHostName(ISessionConfig& config) {
    ConnectConfig* connect = nullptr;
    if (IsTerminalProduct() && config.HasProtocol()) connect = config.GetConnectConfig();
    if (IsTransferProduct() && config.HasTransferProtocol()) connect = config.GetTransferConnectConfig();
    bool wasAsked = false;
    if (connect != nullptr && !FillInHostname(*connect, config.GetName(), this, wasAsked)) return false;
    if (wasAsked && !SaveSession(config)) ShowFailure(u"ERROR: Could not save the session in the database.");
    return true;
}

bool ConnectDialogBase::PrepareForConnect(TreeItem item, bool& canTerminal, bool& canTransfer) {
    canTerminal = canTransfer = false;
    const VRef<ISessionConfig> config = GetItemConfig(item);
    if (!config) return false;
    if (!browseMode) {
        if (!IsTerminalProduct() && !IsTransferProduct()) return false;
        if (!FillInHostName(*config)) return false;
    }
    canTerminal = IsNorHaldenOrHaldenInstalled() && config->IsConnectable();
    canTransfer = IsTessalyInstalled() && config->IsTransferConnectable();
    return canTerminal || canTransfer;
}

VUnicodeString ConnectDialogBase::GetLaunchCommand(const VArray<TreeItem>& list) {
    return MakeLaunchCommand(GetItemPath(list[0]));
}

void ConnectDialogBase::ConnectSelection() {
    const VArray<TreeItem> selected = CollectSelection(Collect::kSessionsInSelection);
    const std::uint64_t selectedCount = selected.GetCount();
    const VRef<GlobalConfig> global = FetchGlobalConfig();
    VProfile<bool>& suppress = global->suppressMultiConnectWarning;
    if (selectedCount > static_cast<std::uint64_t>(kMultiConnectLimit) && !suppress.Get()) {
        bool isSuppressed = false;
        const bool goesOn = MultiConnectWarningDialog(isSuppressed, this).DoModal() == kDialogAccepted;
        if (!goesOn) return;
        suppress.Set(isSuppressed);
    }
    bool canTerminal = false;
    bool canTransfer = false;
    VArray<TreeItem> list;
    for (const TreeItem item : selected)
        if (PrepareForConnect(item, canTerminal, canTransfer)) list.Add(item);
    if (list.IsEmpty()) return;
    // Of several, what is left goes to the running host: the sister application is launched for a single session only.
    const bool runsHere =
        selectedCount > 1 || (IsTerminalProduct() && canTerminal) || (IsTransferProduct() && canTransfer);
    if (runsHere) {
        CollectChosenPaths();
        HandOver(list);
    } else if (canTerminal) {
        LaunchTerminalApp(this, GetLaunchCommand(list).GetData());
    } else {
        LaunchFileTransferApp(this, GetLaunchCommand(list).GetData());
    }
}

void ConnectDialogBase::CollectChosenPaths() {
    chosenPaths.Clear();
    for (const TreeItem item : CollectSelection(Collect::kSelectedTopItems)) chosenPaths.Add(GetItemPath(item));
}

void ConnectDialogBase::HandOver(const VArray<TreeItem>& list) {
    if (list.IsEmpty()) return;
    for (const TreeItem item : list) {
        VRef<ISessionConfig> config = GetItemConfig(item);
        if (config && IsUsableHere(*config)) chosenConfigs.Add(std::move(config));
    }
    EndDialog(kDialogAccepted);
}

VArray<TreeItem> ConnectDialogBase::GetOnlySession() {
    VArray<TreeItem> list = CollectSelection(Collect::kSessionsInSelection);
    bool canTerminal = false;
    bool canTransfer = false;
    if (list.GetCount() != 1 || !PrepareForConnect(list[0], canTerminal, canTransfer)) list.Clear();
    return list;
}

void ConnectDialogBase::ConnectInTerminal() {
    const VArray<TreeItem> list = GetOnlySession();
    if (list.IsEmpty()) return;
    if (IsTerminalProduct()) return HandOver(list);
    LaunchTerminalApp(this, GetLaunchCommand(list).GetData());
    EndDialog(kDialogCancelled);
}

void ConnectDialogBase::ConnectInTransfer() {
    const VArray<TreeItem> list = GetOnlySession();
    if (list.IsEmpty()) return;
    if (IsTransferProduct()) return HandOver(list);
    LaunchFileTransferApp(this, GetLaunchCommand(list).GetData());
    EndDialog(kDialogCancelled);
}

void ConnectDialogBase::ConnectInBoth() {
    const VArray<TreeItem> list = GetOnlySession();
    if (list.IsEmpty()) return;
    if (IsTransferProduct())
        LaunchTerminalApp(this, GetLaunchCommand(list).GetData());
    else
        LaunchFileTransferApp(this, GetLaunchCommand(list).GetData());
    HandOver(list);
}

void ConnectDialogBase::ConnectItemAt(VPoint point) {
    const TreeItem item = ItemFromPoint(point);
    if (item != TreeItem::kNone && !IsFolderItem(item)) ConnectSelection();
}

bool ConnectDialogBase::ConnectQuick() {
    const TreeItem target = GetTargetFolder();
    ClearSelection();
    VRef<ISessionConfig> config;
    if (RunQuickConnect(config, GetItemPath(target)) != kDialogAccepted || !config) return false;
    chosenConfigs.Add(std::move(config));
    return true;
}

std::int64_t ConnectDialogBase::RunQuickConnect(VRef<ISessionConfig>& config, const VUnicodeString& folder) {
    ISessionConfig* chosen = nullptr;
    const std::int64_t result =
        ShowQuickConnectDialog(&chosen, folder, static_cast<unsigned>(GetCurrentAppProductID()), this);
    config = VRef<ISessionConfig>::Adopt(chosen);
    return result;
}

bool ConnectDialogBase::CanConnectSide(const VArray<TreeItem>& items, bool transferSide) {
    if (items.GetCount() != 1) return false;
    const VRef<ISessionConfig> config = GetItemConfig(items[0]);
    if (!config) return false;
    return transferSide ? IsTessalyInstalled() && config->IsTransferConnectable()
                        : IsNorHaldenOrHaldenInstalled() && config->IsConnectable();
}

}  // namespace connectdialog
