#include "sessiondb/entryoperations.h"

#include <string>
#include <unordered_set>
#include <vector>

#include "foundation/casefold.h"
#include "platform/utf16.h"
#include "sessiondb/sessiontree.h"
#include "sessiondb/treecopy.h"
#include "sessiondb/treesteps.h"

namespace connectdialog {

namespace {

/// Runs the steps of a change to an entry as one unit, unless the entry is the root or is not there.
template <class Steps>
bool ChangeEntry(const VUnicodeString& path, Steps steps) {
    // Asked before the unit begins, which takes the store's lock, and again under the lock.
    if (path.IsEmpty() || !SessionKeyExists(path)) return false;
    return AsOneUnit([&] { return SessionKeyExists(path) && steps(); });
}

bool DeleteKeyOf(const VUnicodeString& path) {
    VProfileStore store(false);
    return store.GetRootKey()->DeleteKey(BuildSessionKeyPath(path).GetData()) && store.Close();
}

bool RefreshLists(const VUnicodeString& folder) {
    return ProfileFolderData(folder, false).SaveToStore();
}

/// Folders whose lists wait to be brought up to date, each once.
class StaleFolders {
  public:
    void Add(const VUnicodeString& path) {
        if (known.insert(FoldText(path)).second) paths.push_back(path);
    }
    bool Refresh() const {
        for (const VUnicodeString& path : paths) {
            // A folder that was deleted itself must not come back for the sake of its lists.
            if ((path.IsEmpty() || SessionKeyExists(path)) && !RefreshLists(path)) return false;
        }
        return true;
    }

  private:
    std::unordered_set<std::u16string> known;
    std::vector<VUnicodeString> paths;
};

/// Makes a session's key from another's and gives it its place in the lists.
bool PlaceSession(const VUnicodeString& source, const VUnicodeString& destination, const VUnicodeString& reference,
                  bool after) {
    const auto copy = [&] {
        TreeCopy copying;
        return copying.CopySession(source, destination) && copying.Close();
    };
    return ChangeFolder(GetEntryParent(destination), copy, [&](ProfileFolderData& folder) {
        InsertEntryName(folder.GetOrderedSessions(), GetEntryLeaf(destination), reference, after);
    });
}

bool PlaceFolder(const VUnicodeString& source, const VUnicodeString& destination, const VUnicodeString& skippedName,
                 const VUnicodeString& reference, bool after) {
    TreeCopy copying;
    return AddFolderEntry(GetEntryParent(destination), GetEntryLeaf(destination), reference, after) &&
           copying.CopyFolder(source, destination, skippedName) && copying.Close();
}

bool IsLeaf(const VUnicodeString& name) {
    return !name.IsEmpty() && name.View().find(u'\\') == std::u16string_view::npos;
}

/// The values wait in a key that is no entry of the tree while the session is gone: the new name may be the old one in
/// other case, and then both are the same key. It lies below the root, where there is room however deep the session is.
bool RenameSession(const VUnicodeString& path, const VUnicodeString& newLeaf, const VUnicodeString& reference) {
    const VUnicodeString parent = GetEntryParent(path);
    const VUnicodeString waiting = JoinEntryPath(VUnicodeString(kFolderDataKey), GetEntryLeaf(path));
    TreeCopy copying;
    return copying.CopySession(path, waiting) && DeleteKeyOf(path) && RefreshLists(parent) &&
           PlaceSession(waiting, JoinEntryPath(parent, newLeaf), reference, true) && DeleteKeyOf(waiting) &&
           copying.Close();
}

/// A change of case alone: to the store both names are one, so the folder goes through a name between.
bool RenameFolderCase(const VUnicodeString& path, const VUnicodeString& newLeaf, const VUnicodeString& reference) {
    const VUnicodeString parent = GetEntryParent(path);
    VUnicodeString between = u"__" + GetEntryLeaf(path) + u"__";
    if (between.EqualsNoCase(kFolderDataKey)) between = u"_" + between;
    VUnicodeString betweenPath;
    between = MakeUniqueEntryName(parent, between, betweenPath);
    return RenameFolderTree(path, parent, between, reference) &&
           RenameFolderTree(betweenPath, parent, newLeaf, reference);
}

/// Leaves no half of a character.
VUnicodeString Shorten(const VUnicodeString& name, std::size_t length) {
    const bool isHalved = name.GetLength() > length && platform::IsHighSurrogate(name[length - 1]);
    return name.Left(isHalved ? length - 1 : length);
}

}  // namespace

VUnicodeString MakeUniqueEntryName(const VUnicodeString& folder, const VUnicodeString& base, VUnicodeString& fullPath) {
    VUnicodeString name = base;
    fullPath = JoinEntryPath(folder, name);
    for (int count = 1; SessionKeyExists(fullPath); ++count) {
        VUnicodeString suffix;
        suffix.Format(u" (%1!d!)", count);
        name = Shorten(base, kMaxSessionNameLength - suffix.GetLength()) + suffix;
        fullPath = JoinEntryPath(folder, name);
    }
    return name;
}

VUnicodeString MakeUniqueName(const VUnicodeString& folder, const VUnicodeString& base) {
    VUnicodeString ignored;
    return MakeUniqueEntryName(folder, base, ignored);
}

bool StoreUnderFreeName(const VUnicodeString& folder, ISessionConfig& config,
                        const std::function<VUnicodeString()>& makeName) {
    return AsOneUnit([&] {
        const VUnicodeString name = makeName ? makeName() : MakeUniqueName(folder, config.GetName());
        config.SetName(name);
        return StoreSessionEntry(folder, name, config, VUnicodeString(), true);
    });
}

bool DeleteEntry(const VUnicodeString& path) {
    return ChangeEntry(path, [&] { return DeleteKeyOf(path) && RefreshLists(GetEntryParent(path)); });
}

std::size_t DeleteEntries(std::span<const VUnicodeString> paths) {
    if (paths.empty() || paths.front().IsEmpty()) return 0;
    std::size_t deleted = 0;
    const bool isDone = ChangeEntry(paths.front(), [&] {
        StaleFolders stale;
        for (const VUnicodeString& path : paths) {
            if (path.IsEmpty() || !SessionKeyExists(path) || !DeleteKeyOf(path)) break;
            stale.Add(GetEntryParent(path));
            ++deleted;
        }
        return stale.Refresh();
    });
    return isDone ? deleted : 0;
}

VUnicodeString CopyEntry(const VUnicodeString& source, const VUnicodeString& targetFolder, bool makeUnique,
                         const VUnicodeString& reference, bool after) {
    VUnicodeString destination;
    const bool isCopied = ChangeEntry(source, [&] {
        if (!CanHoldEntries(targetFolder)) return false;
        const VUnicodeString leaf = GetEntryLeaf(source);
        VUnicodeString newName;
        destination = JoinEntryPath(targetFolder, leaf);
        if (makeUnique && SessionKeyExists(destination)) newName = MakeUniqueEntryName(targetFolder, leaf, destination);
        return IsFolderPath(source) ? PlaceFolder(source, destination, newName, reference, after)
                                    : PlaceSession(source, destination, reference, after);
    });
    return isCopied ? destination : VUnicodeString();
}

VUnicodeString MoveEntry(const VUnicodeString& source, const VUnicodeString& targetFolder, bool makeUnique,
                         const VUnicodeString& reference, bool after) {
    VUnicodeString destination;
    const bool isMoved = ChangeEntry(source, [&] {
        if (IsSameOrInside(targetFolder, source)) return false;
        // A copy that must find another name leaves out a child of that name, which would be gone with the source.
        if (IsFolderPath(source) && EntryExistsIn(targetFolder, GetEntryLeaf(source))) return false;
        destination = CopyEntry(source, targetFolder, makeUnique, reference, after);
        return !destination.IsEmpty() && !IsSameOrInside(destination, source) && DeleteEntry(source);
    });
    return isMoved ? destination : VUnicodeString();
}

VUnicodeString ArrangeEntry(const VUnicodeString& path, const VUnicodeString& reference, bool after) {
    const bool isArranged = ChangeEntry(path, [&] {
        ProfileFolderData folder(GetEntryParent(path), false);
        const VUnicodeString leaf = GetEntryLeaf(path);
        VStringArray& folders = folder.GetOrderedFolders();
        const bool isFolder = folders.FindExact(leaf) != VStringArray::kNotFound;
        VStringArray& ordered = isFolder ? folders : folder.GetOrderedSessions();
        if (const std::uint32_t place = ordered.FindExact(leaf); place != VStringArray::kNotFound)
            ordered.RemoveAt(place);
        if (const std::uint32_t place = ordered.FindExact(reference); place != VStringArray::kNotFound)
            ordered.Insert(place + (after ? 1U : 0U), leaf);
        return folder.SaveToStore();
    });
    return isArranged ? path : VUnicodeString();
}

bool RenameEntry(const VUnicodeString& path, const VUnicodeString& newLeaf, const VUnicodeString& reference) {
    if (!IsLeaf(newLeaf)) return false;
    return ChangeEntry(path, [&] {
        const VUnicodeString oldLeaf = GetEntryLeaf(path);
        if (!IsFolderPath(path)) return RenameSession(path, newLeaf, reference);
        if (newLeaf == oldLeaf) return true;
        if (newLeaf.EqualsNoCase(oldLeaf)) return RenameFolderCase(path, newLeaf, reference);
        return RenameFolderTree(path, GetEntryParent(path), newLeaf, reference);
    });
}

bool RenameFolderTree(const VUnicodeString& oldPath, const VUnicodeString& parent, const VUnicodeString& newLeaf,
                      const VUnicodeString& reference) {
    const VUnicodeString newPath = JoinEntryPath(parent, newLeaf);
    if (!IsLeaf(newLeaf) || IsSameOrInside(newPath, oldPath)) return false;
    return ChangeEntry(oldPath, [&] {
        return IsFolderPath(oldPath) && PlaceFolder(oldPath, newPath, VUnicodeString(), reference, true) &&
               DeleteEntry(oldPath);
    });
}

bool RenameToFreeName(const VUnicodeString& path, const VUnicodeString& newLeaf, const VUnicodeString& reference) {
    return ChangeEntry(path, [&] {
        const bool isSameKey = newLeaf.EqualsNoCase(GetEntryLeaf(path));
        return (isSameKey || !EntryExistsIn(GetEntryParent(path), newLeaf)) && RenameEntry(path, newLeaf, reference);
    });
}

bool RenameInPlace(const VUnicodeString& path, const VUnicodeString& newLeaf) {
    return ChangeEntry(path, [&] {
        ProfileFolderData folder(GetEntryParent(path), true);
        const VStringArray& siblings = IsFolderPath(path) ? folder.GetOrderedFolders() : folder.GetOrderedSessions();
        const std::uint32_t place = siblings.FindExact(GetEntryLeaf(path));
        const bool hasOneBefore = place != VStringArray::kNotFound && place > 0;
        if (!RenameToFreeName(path, newLeaf, hasOneBefore ? siblings[place - 1] : VUnicodeString())) return false;
        if (place != 0 || siblings.GetCount() == 1) return true;
        const VUnicodeString newPath = JoinEntryPath(GetEntryParent(path), newLeaf);
        return !ArrangeEntry(newPath, siblings[1], false).IsEmpty();
    });
}

}  // namespace connectdialog
