#include "sessiondb/storedspelling.h"

#include "profile/vprofilekey.h"
#include "sessiondb/sessionpaths.h"

namespace connectdialog {

VUnicodeString SpelledAsStored(const VUnicodeString& path) {
    if (path.IsEmpty()) return path;
    const VUnicodeString parent = SpelledAsStored(GetEntryParent(path));
    const VUnicodeString leaf = GetEntryLeaf(path);
    VProfileStore store(true);
    VProfileKey folder(store.GetRootKey(), BuildSessionKeyPath(parent).GetData(), 0);
    VProfileKeyIterator children(folder, false);
    VUnicodeString name;
    while (children.Next(name))
        if (name.EqualsNoCase(leaf)) return JoinEntryPath(parent, name);
    return JoinEntryPath(parent, leaf);
}

}  // namespace connectdialog
