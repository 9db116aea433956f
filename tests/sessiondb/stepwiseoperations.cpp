#include "sessiondb/stepwiseoperations.h"

#include "config/isessionconfig.h"
#include "profile/vprofilekey.h"
#include "sessiondb/profilefolderdata.h"
#include "sessiondb/sessionpaths.h"
#include "sessiondb/sessiontree.h"

namespace connectdialog::test::stepwise {

namespace {

bool IsOtherKind(const VUnicodeString& path, bool isFolder) {
    return SessionKeyExists(path) && IsFolderPath(path) != isFolder;
}

VUnicodeString FreeName(const VUnicodeString& folder, const VUnicodeString& base) {
    for (int count = 0;; ++count) {
        VUnicodeString name = base;
        if (count > 0) name.Format(u"%1 (%2!d!)", base, count);
        if (!EntryExistsIn(folder, name)) return name;
    }
}

bool DeleteSteps(const VUnicodeString& path) {
    {
        VProfileStore store(false);
        if (!store.GetRootKey()->DeleteKey(BuildSessionKeyPath(path).GetData())) return false;
    }
    return ProfileFolderData(GetEntryParent(path), false).SaveToStore();
}

struct CopyTarget {
    VUnicodeString folder;
    bool makeUnique;
    VUnicodeString reference;
    bool after;
};

/// `top` is where the whole copy goes; it becomes known at the first level.
bool CopySteps(const VUnicodeString& source, const CopyTarget& target, VUnicodeString& top) {
    VUnicodeString name = GetEntryLeaf(source);
    VUnicodeString newName;
    if (target.makeUnique && EntryExistsIn(target.folder, name)) name = newName = FreeName(target.folder, name);
    const VUnicodeString destination = JoinEntryPath(target.folder, name);
    if (top.IsEmpty()) top = destination;
    if (IsOtherKind(destination, IsFolderPath(source))) return false;
    if (!IsFolderPath(source)) {
        const auto config = LoadSessionEntry(source, GetEntryLeaf(source));
        const auto clone = VRef<ISessionConfig>::Adopt(config->Clone());
        return StoreSessionEntry(target.folder, name, *clone, target.reference, target.after);
    }
    AddFolderEntry(target.folder, name, target.reference, target.after);
    WriteIsExpanded(destination, ReadIsExpanded(source));
    const CopyTarget below{destination, target.makeUnique, VUnicodeString(), true};
    VStringArray folders;
    EnumerateChildFolders(source, folders);
    for (const VUnicodeString& child : folders) {
        const VUnicodeString path = JoinEntryPath(source, child);
        if (child == newName || path.EqualsNoCase(top)) continue;
        if (!CopySteps(path, below, top)) return false;
    }
    const VStringArray sessions = ProfileFolderData(source, true).GetShownSessions();
    for (const VUnicodeString& child : sessions)
        if (!CopySteps(JoinEntryPath(source, child), below, top)) return false;
    return true;
}

bool RenameFolderSteps(const VUnicodeString& oldPath, const VUnicodeString& newLeaf, const VUnicodeString& reference) {
    const VUnicodeString newPath = JoinEntryPath(GetEntryParent(oldPath), newLeaf);
    if (IsOtherKind(newPath, true)) return false;
    AddFolderEntry(GetEntryParent(oldPath), newLeaf, reference, true);
    WriteIsExpanded(newPath, ReadIsExpanded(oldPath));
    const ProfileFolderData old(oldPath, true);
    for (const VStringArray& names : {old.GetShownFolders(), old.GetShownSessions()}) {
        for (const VUnicodeString& child : names) {
            VUnicodeString top = newPath;
            if (!CopySteps(JoinEntryPath(oldPath, child), {newPath, false, VUnicodeString(), true}, top)) return false;
        }
    }
    return DeleteSteps(oldPath);
}

bool RenameSteps(const VUnicodeString& path, const VUnicodeString& newLeaf, const VUnicodeString& reference) {
    const VUnicodeString oldLeaf = GetEntryLeaf(path);
    const VUnicodeString parent = GetEntryParent(path);
    if (!IsFolderPath(path)) {
        if (IsOtherKind(JoinEntryPath(parent, newLeaf), false)) return false;
        const auto config = LoadSessionEntry(path, oldLeaf);
        return DeleteSteps(path) && StoreSessionEntry(parent, newLeaf, *config, reference, true);
    }
    if (newLeaf == oldLeaf) return true;
    if (!newLeaf.EqualsNoCase(oldLeaf)) return RenameFolderSteps(path, newLeaf, reference);
    const VUnicodeString between = u"__" + oldLeaf + u"__";
    return RenameFolderSteps(path, between, reference) &&
           RenameFolderSteps(JoinEntryPath(parent, between), newLeaf, reference);
}

/// What fails in the middle leaves nothing behind.
template <class Steps>
bool Whole(const VUnicodeString& path, Steps steps) {
    if (path.IsEmpty() || !SessionKeyExists(path)) return false;
    VProfileStore store(false);
    if (!store.JoinUnitOfWork()) return false;
    if (steps()) return store.Close();
    store.Abandon();
    return false;
}

}  // namespace

bool DeleteEntry(const VUnicodeString& path) {
    return Whole(path, [&] { return DeleteSteps(path); });
}

VUnicodeString CopyEntry(const VUnicodeString& source, const VUnicodeString& targetFolder, bool makeUnique,
                         const VUnicodeString& reference, bool after) {
    VUnicodeString top;
    const bool isCopied = IsFolderPath(targetFolder) && Whole(source, [&] {
                              return CopySteps(source, {targetFolder, makeUnique, reference, after}, top);
                          });
    return isCopied ? top : VUnicodeString();
}

VUnicodeString ArrangeEntry(const VUnicodeString& path, const VUnicodeString& reference, bool after) {
    if (path.IsEmpty() || !SessionKeyExists(path)) return VUnicodeString();
    ProfileFolderData folder(GetEntryParent(path), false);
    folder.SaveToStore();
    VStringArray& ordered = IsFolderPath(path) ? folder.GetOrderedFolders() : folder.GetOrderedSessions();
    if (const auto at = ordered.FindExact(GetEntryLeaf(path)); at != VStringArray::kNotFound) ordered.RemoveAt(at);
    if (const auto at = ordered.FindExact(reference); at != VStringArray::kNotFound)
        ordered.Insert(after ? at + 1U : at, GetEntryLeaf(path));
    folder.SaveToStore();
    return path;
}

bool RenameEntry(const VUnicodeString& path, const VUnicodeString& newLeaf, const VUnicodeString& reference) {
    return Whole(path, [&] { return RenameSteps(path, newLeaf, reference); });
}

}  // namespace connectdialog::test::stepwise
