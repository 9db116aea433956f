// Desktop shortcuts to what is selected.
#include "connectdialog/connectdialogbase.h"
#include "connectdialog/shortcutnamedialog.h"

namespace connectdialog {

void ConnectDialogBase::CreateShortcutForSelection() {
    const VArray<TreeItem> items = CollectSelection(Collect::kSelectedItems);
    if (items.IsEmpty()) return;
    VStringArray sessions;
    VStringArray folders;
    for (const TreeItem item : items) (IsFolderItem(item) ? folders : sessions).Add(GetItemPath(item));
    VUnicodeString arguments;
    for (const VUnicodeString& path : sessions) arguments += u"/S \"" + path + u"\" ";
    for (const VUnicodeString& path : folders)
        arguments += path.IsEmpty() ? u"/SESSION_FOLDER \\ "_v : u"/SESSION_FOLDER \"" + path + u"\" ";
    ShortcutNameDialog dialog(folders.IsEmpty() ? sessions[0] : folders[0], items.GetCount() > 1, this);
    if (dialog.DoModal() != kDialogAccepted) return;
    if (!CreateDesktopShortcut(arguments, dialog.GetShortcutName())) ShowFailure(u"ERROR: creation of shortcut failed");
}

bool ConnectDialogBase::CreateDesktopShortcut(const VUnicodeString&, const VUnicodeString&) {
    return false;
}

}  // namespace connectdialog
