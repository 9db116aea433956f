#include "sessiondb/folderadditions.h"

#include "sessiondb/listmerge.h"

namespace connectdialog {

FolderAdditions::FolderAdditions(const VUnicodeString& path)
    : path(path),
      folder(path, false),
      listedFolders(folder.GetOrderedFolders().begin(), folder.GetOrderedFolders().end()),
      listedSessions(folder.GetOrderedSessions().begin(), folder.GetOrderedSessions().end()),
      wasEmpty(folder.IsEmpty()) {}

void FolderAdditions::Add(const VUnicodeString& name, VStringArray& ordered, Names& listed) {
    isChanged = true;
    // The second look at the folder puts what cannot be listed at the end.
    if (!CanBeListed(name) || listed.contains(name)) return;
    ordered.Add(name);
    listed.insert(ordered[ordered.GetCount() - 1]);
}

bool FolderAdditions::Finish() {
    if (!isChanged) return true;
    return folder.SaveToStore() && ProfileFolderData(path, false).SaveToStore();
}

}  // namespace connectdialog
