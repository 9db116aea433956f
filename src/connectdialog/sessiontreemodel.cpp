// Filling the tree, walking it, and keeping how it looked.
#include <utility>
#include <vector>

#include "connectdialog/connectdialogbase.h"
#include "connectdialog/quietselection.h"
#include "imports/dialogkit/appname.h"
#include "imports/dialogkit/idialogkit.h"
#include "sessiondb/entrysearch.h"
#include "sessiondb/profilefolderdata.h"
#include "sessiondb/sessionpaths.h"
#include "sessiondb/sessiontree.h"
#include "sessiondb/treesteps.h"

namespace connectdialog {

namespace {

constexpr int kArrangementCount = 3;

}  // namespace

void ConnectDialogBase::ReloadTree() {
    const QuietSelection quiet(*this);
    const VWaitCursor wait;
    DeleteAllItems();
    const TreeItem root = AddFolderItem(TreeItem::kNone, kRootLabel, TreePlace::kLast, TreeItem::kNone);
    FillFolder(root, VUnicodeString());
    const VRef<GlobalConfig> global = FetchGlobalConfig();
    const TreeItem found = browseMode
                               ? FindItemByPath(initialPath, false)
                               : FindItemByPath(global->lastSessionPath.Get(), global->lastSessionExpanded.Get());
    if (found != TreeItem::kNone)
        SelectItem(found);
    else if (!browseWithoutPath)
        SelectItem(root);
    OnSelectionChanged();
}

/// All folders below come at once, whatever their depth; sessions only where a folder was open the last time. A folder
/// with anything in it gets an expander.
void ConnectDialogBase::FillFolder(TreeItem top, const VUnicodeString& topPath) {
    const bool remembers = FetchGlobalConfig()->rememberFolderExpansion.Get();
    // A key that stays open and a view spare the store a look at its file for each read.
    VProfileStore store(true);
    store.HoldView();
    const VProfileKey sessionsKey(store.GetRootKey(), kSessionsKey, 0);
    std::vector<std::pair<TreeItem, VUnicodeString>> waiting{{top, topPath}};
    while (!waiting.empty()) {
        const auto [item, path] = std::move(waiting.back());
        waiting.pop_back();
        const FolderOutline folder = ReadFolderOutline(path);
        if (folder.hasEntries) SetItemHasChildren(item);
        for (const VUnicodeString& name : folder.folders)
            waiting.emplace_back(AddFolderItem(item, name, TreePlace::kLast, TreeItem::kNone),
                                 JoinEntryPath(path, name));
        if (!remembers || !folder.isExpanded) continue;
        AddSessions(item, ProfileFolderData(path, true).GetShownSessions(), path);
        ExpandItem(item);
    }
}

TreeItem ConnectDialogBase::AddFolderItem(TreeItem parent, const VUnicodeString& name, TreePlace place,
                                          TreeItem after) {
    return InsertItem(parent, place, after, name, new SessionItemData{EntryKind::kFolder, false, {}, {}});
}

TreeItem ConnectDialogBase::AddFolderItemAndChildren(TreeItem parent, const VUnicodeString& name, TreePlace place,
                                                     TreeItem after) {
    const TreeItem item = AddFolderItem(parent, name, place, after);
    if (item != TreeItem::kNone) FillFolder(item, GetItemPath(item));
    return item;
}

TreeItem ConnectDialogBase::AddSessionItem(TreeItem parent, const VUnicodeString& name, TreePlace place,
                                           TreeItem after) {
    if (parent == GetRootItem() && IsTemplateEntry({}, name)) return TreeItem::kNone;
    return InsertItem(parent, place, after, name, new SessionItemData{EntryKind::kSession, false, {}, {}});
}

void ConnectDialogBase::LoadFolderSessions(TreeItem folder) {
    const SessionItemData* data = GetItemData(folder);
    if (data == nullptr || data->sessionsLoaded) return;
    const VUnicodeString path = GetItemPath(folder);
    // A session is walked over like a folder without entries, and has none.
    AddSessions(folder, IsFolderItem(folder) ? ProfileFolderData(path, true).GetShownSessions() : VStringArray(), path);
}

void ConnectDialogBase::AddSessions(TreeItem folder, const VStringArray& names, const VUnicodeString& path) {
    const VRef<GlobalConfig> global = FetchGlobalConfig();
    const bool isTerminal = IsTerminalHost();
    const bool showAll = isTerminal ? global->showTransferSessions.Get() : global->showTerminalSessions.Get();
    const AppKind kind = isTerminal ? AppKind::kNorHalden : AppKind::kTessaly;
    for (const VUnicodeString& name : names) {
        if (!showAll && !SessionHasProtocol(kind, JoinEntryPath(path, name))) continue;
        AddSessionItem(folder, name, TreePlace::kLast, TreeItem::kNone);
    }
    GetItemData(folder)->sessionsLoaded = true;
    MarkExpandedOnce(folder);
}

bool ConnectDialogBase::IsFolderItem(TreeItem item) {
    const SessionItemData* data = GetItemData(item);
    return data != nullptr && data->kind == EntryKind::kFolder;
}

VUnicodeString ConnectDialogBase::GetItemPath(TreeItem item) {
    VUnicodeString path;
    const TreeItem root = GetRootItem();
    for (; item != TreeItem::kNone && item != root; item = GetParentItem(item))
        path = path.IsEmpty() ? GetItemText(item) : JoinEntryPath(GetItemText(item), path);
    return path;
}

VUnicodeString ConnectDialogBase::GetItemParentPath(TreeItem item) {
    return GetItemPath(GetParentItem(item));
}

TreeItem ConnectDialogBase::GetFolderOf(TreeItem item) {
    return IsFolderItem(item) ? item : GetParentItem(item);
}

VRef<ISessionConfig> ConnectDialogBase::GetItemConfig(TreeItem item) {
    SessionItemData* data = GetItemData(item);
    if (data == nullptr || data->kind == EntryKind::kFolder) return nullptr;
    if (!data->config) data->config = OpenSession(GetItemPath(item));
    if (data->config) data->searched.reset();  // what the session has from now on
    return data->config;
}

TreeItem ConnectDialogBase::FirstSessionChild(TreeItem item) {
    TreeItem iterator = TreeItem::kNone;
    TreeItem child = GetChildItem(item, iterator);
    while (child != TreeItem::kNone && IsFolderItem(child)) child = GetNextSiblingItem(iterator);
    return child;
}

TreeItem ConnectDialogBase::GetNextInWalk(TreeItem item, bool intoChildren) {
    TreeItem iterator = TreeItem::kNone;
    if (intoChildren) {
        const TreeItem child = GetChildItem(item, iterator);
        if (child != TreeItem::kNone) return child;
    }
    for (; item != TreeItem::kNone; item = GetParentItem(item)) {
        iterator = item;
        const TreeItem sibling = GetNextSiblingItem(iterator);
        if (sibling != TreeItem::kNone) return sibling;
    }
    return TreeItem::kNone;
}

bool ConnectDialogBase::IsInside(TreeItem item, TreeItem ancestor) {
    while (item != TreeItem::kNone && item != ancestor) item = GetParentItem(item);
    return item != TreeItem::kNone;
}

VArray<TreeItem> ConnectDialogBase::CollectSelection(Collect mode) {
    const bool collectFolders = mode != Collect::kSessionsInSelection;
    VArray<TreeItem> items;
    TreeItem inside = TreeItem::kNone;  // the selected folder all of whose sessions are collected
    bool descend = true;
    for (TreeItem item = GetRootItem(); item != TreeItem::kNone; item = GetNextInWalk(item, descend)) {
        descend = true;
        if (inside != TreeItem::kNone && !IsInside(item, inside)) inside = TreeItem::kNone;
        if (inside == TreeItem::kNone && !IsItemSelected(item)) continue;
        const bool isFolder = IsFolderItem(item);
        if (!isFolder || collectFolders) items.Add(item);
        if (!isFolder) continue;
        if (!collectFolders) {
            LoadFolderSessions(item);
            if (inside == TreeItem::kNone) inside = item;
        }
        descend = mode == Collect::kSelectedItems || !collectFolders ||
                  (mode == Collect::kSelectedForDelete && item == GetRootItem());
    }
    return items;
}

TreeItem ConnectDialogBase::FindChild(TreeItem parent, std::u16string_view name) {
    TreeItem iterator = TreeItem::kNone;
    TreeItem child = GetChildItem(parent, iterator);
    while (child != TreeItem::kNone && GetItemText(child) != name) child = GetNextSiblingItem(iterator);
    return child;
}

TreeItem ConnectDialogBase::FindItemByPath(const VUnicodeString& path, bool expandLast) {
    TreeItem item = GetRootItem();
    if (path.IsEmpty()) {
        if (expandLast) ExpandItem(item);
        return TreeItem::kNone;
    }
    std::u16string_view rest = path;
    if (rest.starts_with(u'\\')) rest.remove_prefix(1);
    while (true) {
        ExpandItem(item);
        const std::size_t end = rest.find(u'\\');
        item = FindChild(item, rest.substr(0, end));
        if (item == TreeItem::kNone || end == rest.npos) break;
        rest.remove_prefix(end + 1);
    }
    if (item != TreeItem::kNone && expandLast && IsFolderItem(item)) ExpandItem(item);
    return item;
}

void ConnectDialogBase::SaveTreeState() {
    if (browseMode) return;
    const VRef<GlobalConfig> global = FetchGlobalConfig();
    if (const VArray<TreeItem> items = CollectSelection(Collect::kSelectedItems); !items.IsEmpty()) {
        global->lastSessionPath.Set(GetItemPath(items[0]));
        global->lastSessionExpanded.Set(IsFolderItem(items[0]) && IsItemExpanded(items[0]));
    }
    if (global->saveConfigOnClose.Get()) global->Save();
    if (global->rememberFolderExpansion.Get()) SaveExpansion(GetRootItem());
}

/// How the tree looks is no more than a convenience: a store that refuses it costs nothing else.
void ConnectDialogBase::SaveExpansion(TreeItem top) {
    std::vector<std::pair<VUnicodeString, bool>> changed;
    // A folder that is gone must not come back for the sake of this value.
    const auto isThere = [](const VUnicodeString& path) {
        return path.IsEmpty() || (SessionKeyExists(path) && IsFolderPath(path));
    };
    for (TreeItem item = top; item != TreeItem::kNone && IsInside(item, top); item = GetNextInWalk(item, true)) {
        if (!IsFolderItem(item) || IsPlaceholder(item)) continue;
        VUnicodeString path = GetItemPath(item);
        const bool isExpanded = IsItemExpanded(item);
        if (ReadIsExpanded(path) != isExpanded && isThere(path)) changed.emplace_back(std::move(path), isExpanded);
    }
    if (changed.empty()) return;
    AsOneUnit([&] {
        for (const auto& [path, isExpanded] : changed)
            if (isThere(path) && !WriteIsExpanded(path, isExpanded)) return false;
        return true;
    });
}

void ConnectDialogBase::ReapplyExpansion(TreeItem top) {
    for (TreeItem item = top; item != TreeItem::kNone && IsInside(item, top); item = GetNextInWalk(item, true))
        if (IsFolderItem(item) && ReadIsExpanded(GetItemPath(item))) ExpandItem(item);
}

void ConnectDialogBase::SetArrangement(SessionArrangement value) {
    SaveTreeState();
    FetchGlobalConfig()->sessionArrangementMode.Set(static_cast<int>(value));
    arrangement = value;
    SetPasteAvailable(false);
    ReloadTree();
}

void ConnectDialogBase::RotateArrangement() {
    const int stored = FetchGlobalConfig()->sessionArrangementMode.Get();
    SetArrangement(static_cast<SessionArrangement>((static_cast<unsigned>(stored) + 1) % kArrangementCount));
}

void ConnectDialogBase::ToggleTerminalFilter() {
    const VRef<GlobalConfig> global = FetchGlobalConfig();
    VProfile<bool>& shown = global->showTerminalSessions;
    shown.Set(!shown.Get());
    showTerminalSessions = shown.Get();
    ReloadTree();
}

void ConnectDialogBase::ToggleTransferFilter() {
    const VRef<GlobalConfig> global = FetchGlobalConfig();
    VProfile<bool>& shown = global->showTransferSessions;
    shown.Set(!shown.Get());
    showTransferSessions = shown.Get();
    ReloadTree();
}

}  // namespace connectdialog
