// Looking for a text in the whole tree.
#include "connectdialog/connectdialogbase.h"
#include "connectdialog/findsessiondialog.h"
#include "connectdialog/quietselection.h"
#include "imports/dialogkit/idialogkit.h"
#include "imports/dialogkit/vmessagebox.h"
#include "sessiondb/entrysearch.h"

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
    const VRef<ISessionConfig> config = GetItemConfig(item);
    return config && SessionMatches(*config, options);
}

}  // namespace connectdialog
