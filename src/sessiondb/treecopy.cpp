#include "sessiondb/treecopy.h"

#include "sessiondb/folderadditions.h"
#include "sessiondb/sessionpaths.h"
#include "sessiondb/sessiontree.h"
#include "sessiondb/treesteps.h"

namespace connectdialog {

namespace {

/// An entry of the other kind would vanish from the tree with all that lies below it.
bool IsFreeFor(const VUnicodeString& path, bool isSession) {
    return !SessionKeyExists(path) || IsFolderPath(path) != isSession;
}

}  // namespace

bool TreeCopy::CopySession(const VUnicodeString& source, const VUnicodeString& destination) {
    if (!IsFreeFor(destination, true)) return false;
    VProfileKey from(store.GetRootKey(), BuildSessionKeyPath(source).GetData(), 0);
    VProfileKey to(store.GetRootKey(), BuildSessionKeyPath(destination).GetData(), 0);
    return CopyKey(from, source, to, destination);
}

bool TreeCopy::CopyKey(VProfileKey& from, const VUnicodeString& source, VProfileKey& to,
                       const VUnicodeString& destination) {
    const VRef<ISessionConfig> session = LoadSessionFrom(from, source, GetEntryLeaf(source));
    session->SetPath(destination);
    if (!source.EqualsNoCase(destination) && !to.CopyValues(from)) return false;
    // What loading corrected or found missing is all that differs from the values that were copied.
    session->Save(to, false);
    return to.AllWritten();
}

bool TreeCopy::CopyFolder(const VUnicodeString& source, const VUnicodeString& destination,
                          const VUnicodeString& skippedName) {
    top = destination;
    return CopyBelow(source, destination, skippedName);
}

bool TreeCopy::CopyBelow(const VUnicodeString& source, const VUnicodeString& destination,
                         const VUnicodeString& skippedName) {
    if (!IsFreeFor(destination, false) || !CreateFolderKey(store, destination)) return false;
    const ProfileFolderData from(source, true);
    if (!WriteIsExpanded(destination, from.GetIsExpanded())) return false;

    FolderAdditions additions(destination);
    VProfileKey fromFolder(store.GetRootKey(), BuildSessionKeyPath(source).GetData(), 0);
    VProfileKey toFolder(store.GetRootKey(), BuildSessionKeyPath(destination).GetData(), 0);
    const auto copyFolder = [&](const VUnicodeString& name) {
        return CopyBelow(JoinEntryPath(source, name), JoinEntryPath(destination, name), VUnicodeString());
    };
    const auto copySession = [&](const VUnicodeString& name) {
        const VUnicodeString path = JoinEntryPath(destination, name);
        if (!additions.WasEmpty() && !IsFreeFor(path, true)) return false;
        VProfileKey from(&fromFolder, name.GetData(), 0);
        VProfileKey to(&toFolder, name.GetData(), 0);
        return CopyKey(from, JoinEntryPath(source, name), to, path);
    };
    for (const VUnicodeString& name : from.GetShownFolders()) {
        if ((!skippedName.IsEmpty() && name == skippedName) || JoinEntryPath(source, name).EqualsNoCase(top)) continue;
        if (!copyFolder(name)) return false;
        additions.AddFolder(name);
    }
    for (const VUnicodeString& name : from.GetShownSessions()) {
        if (!copySession(name)) return false;
        additions.AddSession(name);
    }
    for (const VUnicodeString& name : from.GetHiddenFolders())
        if (!JoinEntryPath(source, name).EqualsNoCase(top) && !copyFolder(name)) return false;
    for (const VUnicodeString& name : from.GetHiddenSessions())
        if (!copySession(name)) return false;
    return additions.Finish();
}

}  // namespace connectdialog
