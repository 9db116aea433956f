// Looking for a text in the whole tree.
#include "connectdialog/connectdialogbase.h"
#include "connectdialog/findsessiondialog.h"
#include "connectdialog/quietselection.h"
#include "imports/dialogkit/idialogkit.h"
#include "imports/dialogkit/vmessagebox.h"
#include "sessiondb/entrysearch.h"
#include "sessiondb/sessiontree.h"

namespace connectdialog {

namespace {

/// What was looked for last, in any dialog of this process.
FindOptions& LastFind() {
    static FindOptions options;
    return options;
}

}  // namespace

void ConnectDialogBase::FindFirst() {
    findActive = false;
    findCurrent = TreeItem::kNone;
    FindNext();
}

void ConnectDialogBase::FindNext() {
    const bool continuing = findActive;
    if (!continuing) {
        FindSessionDialog dialog(LastFind(), this);
        if (dialog.DoModal() != kDialogAccepted) return;
        LastFind() = dialog.GetOptions();
        findActive = true;
    }
    TreeItem item = SearchOn();
    if (item == TreeItem::kNone && !continuing) {
        VMessageBox(this, DescribeNotFound(LastFind()), kBoxInformation);
        return;
    }
    if (item == TreeItem::kNone) {
        // From the top again.
        findCurrent = TreeItem::kNone;
        item = SearchOn();
    }
    SelectItem(item);
}

TreeItem ConnectDialogBase::SearchOn() {
    const VWaitCursor wait;
    TreeItem item = WalkNext();
    while (item != TreeItem::kNone && !MatchesFind(item)) item = WalkNext();
    return item;
}

TreeItem ConnectDialogBase::WalkNext() {
    if (!IsValidItem(findCurrent)) return findCurrent = GetRootItem();
    LoadFolderSessions(findCurrent);
    return findCurrent = GetNextInWalk(findCurrent, true);
}

bool ConnectDialogBase::MatchesFind(TreeItem item) {
    const FindOptions& options = LastFind();
    if (NameMatches(GetItemText(item), !IsFolderItem(item), options)) return true;
    if (IsFolderItem(item) || (!options.inHostnames && !options.inDescriptions)) return false;
    SessionItemData& data = *GetItemData(item);
    if (data.config) return SessionMatches(GetSearchedTexts(*data.config), options);
    if (data.searched == nullptr) {
        // A whole session on each item that was looked at would be too much where there are many.
        const VRef<ISessionConfig> config = OpenSession(GetItemPath(item));
        if (!config) return false;
        data.searched = std::make_unique<SearchedTexts>(GetSearchedTexts(*config));
    }
    return SessionMatches(*data.searched, options);
}

}  // namespace connectdialog
