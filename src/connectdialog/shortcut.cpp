// Desktop shortcuts to what is selected.
#include "connectdialog/connectdialogbase.h"
#include "connectdialog/desktopshortcut.h"
#include "connectdialog/shortcutnamedialog.h"

namespace connectdialog {

void ConnectDialogBase::CreateShortcutForSelection() {
    const VArray<TreeItem> items = CollectSelection(Collect::kSelectedItems);
    if (items.IsEmpty()) return;
    VStringArray sessions;
    VStringArray folders;
    for (const TreeItem item : items) (IsFolderItem(item) ? folders : sessions).Add(GetItemPath(item));
    ShortcutNameDialog dialog(folders.IsEmpty() ? sessions[0] : folders[0], items.GetCount() > 1, this);
    if (dialog.DoModal() != kDialogAccepted) return;
    const VUnicodeString arguments = BuildShortcutArguments(sessions, folders);
    if (!NamesExactly(arguments, sessions, folders) || !MakeShortcut(arguments, dialog.GetShortcutName()))
        ShowFailure(kShortcutFailure);
}

bool ConnectDialogBase::MakeShortcut(const VUnicodeString& arguments, const VUnicodeString& label) {
    return CreateDesktopShortcut(arguments, label, this);
}

}  // namespace connectdialog
