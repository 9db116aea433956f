#include "imports/dialogkit/browseforfolder.h"

#include "imports/dialogkit/idialogkit.h"
#include "imports/dialogkit/vmessagebox.h"

namespace connectdialog {

bool VBrowseForFolder(VWindow* owner, VUnicodeString& path) {
    IDialogKit* kit = GetDialogKit();
    if (kit == nullptr) return false;
    if (!kit->BrowseForFolder(owner, u"Select a folder for storing application data:"_v, path)) return false;
    if (path.IsEmpty()) VMessageBox(owner, u"Failed to retrieve a valid path."_v, kBoxWarning);
    return true;
}

}  // namespace connectdialog
