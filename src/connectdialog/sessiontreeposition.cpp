// Where a new item goes, in the tree and in the user's order that the database keeps.
#include "connectdialog/connectdialogbase.h"
#include "foundation/casefold.h"

namespace connectdialog {

namespace {

int CompareSessions(const VUnicodeString& name, const VUnicodeString& label, bool isNatural) {
    return isNatural ? name.CompareNumeric(label) : CompareNoCase(name, label);
}

}  // namespace

void ConnectDialogBase::StartPosition() {
    insertMode = TreePlace::kLast;
    insertAfter = TreeItem::kNone;
    referenceName.Empty();
}

void ConnectDialogBase::PositionFolderSorted(TreeItem parent, const VUnicodeString& name) {
    StartPosition();
    TreeItem previous = TreeItem::kNone;
    TreeItem iterator = TreeItem::kNone;
    TreeItem child = GetChildItem(parent, iterator);
    while (child != TreeItem::kNone && IsFolderItem(child) && CompareNoCase(name, GetItemText(child)) >= 0) {
        previous = child;
        child = GetNextSiblingItem(iterator);
    }
    if (child == TreeItem::kNone) return;
    insertMode = previous != TreeItem::kNone ? TreePlace::kBehind : TreePlace::kFirst;
    insertAfter = previous;
}

void ConnectDialogBase::PositionSessionSorted(TreeItem parent, const VUnicodeString& name) {
    StartPosition();
    const bool isNatural = FetchGlobalConfig()->sessionArrangementMode.Get() != 0;
    TreeItem previous = TreeItem::kNone;
    TreeItem iterator = TreeItem::kNone;
    TreeItem child = GetChildItem(parent, iterator);
    while (child != TreeItem::kNone &&
           (IsFolderItem(child) || CompareSessions(name, GetItemText(child), isNatural) > 0)) {
        previous = child;
        child = GetNextSiblingItem(iterator);
    }
    if (child == TreeItem::kNone) return;
    insertMode = previous != TreeItem::kNone ? TreePlace::kBehind : TreePlace::kFirst;
    insertAfter = previous;
}

void ConnectDialogBase::PositionBehindLastFolder(TreeItem parent) {
    StartPosition();
    insertMode = TreePlace::kFirst;
    TreeItem iterator = TreeItem::kNone;
    for (TreeItem child = GetChildItem(parent, iterator); child != TreeItem::kNone && IsFolderItem(child);
         child = GetNextSiblingItem(iterator))
        PositionBehind(child);
}

void ConnectDialogBase::PositionAtEnd() {
    StartPosition();
}

void ConnectDialogBase::PositionBehind(TreeItem item) {
    insertMode = TreePlace::kBehind;
    insertAfter = item;
    referenceName = GetItemText(item);
}

/// The database keeps folders and sessions in two lists: a folder is no neighbour of a session there.
void ConnectDialogBase::PositionBefore(TreeItem item, bool isSession) {
    StartPosition();
    const TreeItem previous = GetPrevSiblingItem(item);
    if (previous == TreeItem::kNone) {
        insertMode = TreePlace::kFirst;
        referenceName = GetItemText(item);
        return;
    }
    PositionBehind(previous);
    if (isSession && IsFolderItem(previous))
        referenceName = GetItemText(item);
    else
        insertBehindReference = true;
}

void ConnectDialogBase::PositionFirstInRoot() {
    StartPosition();
    insertMode = TreePlace::kFirst;
    TreeItem iterator = TreeItem::kNone;
    const TreeItem first = GetChildItem(GetRootItem(), iterator);
    if (first == TreeItem::kNone || !IsFolderItem(first)) return;
    referenceName = GetItemText(first);
    insertBehindReference = false;
}

}  // namespace connectdialog
