// Operations that change the shape of the session tree: delete, copy, move, arrange, rename, and names that are free.
//
// Free functions over session paths without user interface; who calls them has asked entryrefusals.h before. Each is
// one unit of work: whatever moment the process dies, the store holds the state before or the state after. What a
// result says of a store that refused is told as in sessiontree.h: nothing has changed then.
//
// `reference` and `after` say where an entry goes among its siblings, by InsertEntryName: next to the sibling of that
// name, behind it when `after` is set; an empty reference means at the end.
#pragma once

#include <cstddef>
#include <functional>
#include <span>

#include "foundation/vunicodestring.h"
#include "sessiondb/sessionpaths.h"

namespace connectdialog {

class ISessionConfig;

/// `base`, or when an entry of that name stands in the folder the first of `base (1)`, `base (2)`... that is free, with
/// `base` cut so that the name is one that a user could give (kMaxSessionNameLength).
/// `fullPath` becomes the path of that name in the folder.
VUnicodeString MakeUniqueEntryName(const VUnicodeString& folder, const VUnicodeString& base, VUnicodeString& fullPath);
VUnicodeString MakeUniqueName(const VUnicodeString& folder, const VUnicodeString& base);

/// Stores a session at the end of a folder, and gives it the name under which it stands there: `makeName` gives one
/// that is free, or without it MakeUniqueName from the session's own. Nobody else takes the name between.
bool StoreUnderFreeName(const VUnicodeString& folder, ISessionConfig& config,
                        const std::function<VUnicodeString()>& makeName = {});

/// Deletes a session, or a folder with everything below it. False when there is none, for the root, and when the store
/// refused; nothing has changed then.
bool DeleteEntry(const VUnicodeString& path);
/// Deletes entries in the given order up to the first that cannot be deleted, as one unit and in linear time. Gives how
/// many were deleted; 0 also when the store refused.
std::size_t DeleteEntries(std::span<const VUnicodeString> paths);

/// Copies a session, or a folder with everything below it (see TreeCopy), into another folder. With `makeUnique` an
/// entry of that name in the target folder is left alone and the copy gets a free name; without, a session is replaced
/// in its place by a session and a folder is filled up by a folder. Gives the path of the copy.
/// On failure: the empty path, when there is no such entry, for the root, when the target is a session, when an entry
/// of the other kind is in the way, and when the store refused.
VUnicodeString CopyEntry(const VUnicodeString& source, const VUnicodeString& targetFolder, bool makeUnique,
                         const VUnicodeString& reference, bool after);
/// CopyEntry and DeleteEntry of the source as one unit. Refuses also a target folder that is the source or lies in it.
VUnicodeString MoveEntry(const VUnicodeString& source, const VUnicodeString& targetFolder, bool makeUnique,
                         const VUnicodeString& reference, bool after);

/// Moves an entry among its siblings, whatever the arrangement that is shown. When no sibling has the reference's name
/// the entry leaves the stored list, and the next look at the folder puts it at the end. Gives the path.
/// On failure: the empty path, when there is no such entry, for the root, and when the store refused.
VUnicodeString ArrangeEntry(const VUnicodeString& path, const VUnicodeString& reference, bool after);

/// Gives an entry another name beside its siblings, behind the reference. An entry of its kind that has the new name is
/// replaced or filled up. A folder keeps its expansion, and its content gets the order in which it was shown.
/// On failure: false, when there is no such entry, for the root, for a name that is empty or holds `\`, when an entry
/// of the other kind has it, and when the store refused.
bool RenameEntry(const VUnicodeString& path, const VUnicodeString& newLeaf, const VUnicodeString& reference);
/// The same for a name that the user gave. On failure: false also when another entry has the name, be it that another
/// process made it since ValidateSessionName was asked; the same name in other case is no other entry.
bool RenameToFreeName(const VUnicodeString& path, const VUnicodeString& newLeaf, const VUnicodeString& reference);
/// RenameToFreeName, and the entry keeps its place in the user's order.
bool RenameInPlace(const VUnicodeString& path, const VUnicodeString& newLeaf);
/// RenameEntry for a folder and nothing else, as a copy into the folder `newLeaf` of `parent` and a deletion. Fails
/// also when the new path is the old one in any case, or lies in it.
bool RenameFolderTree(const VUnicodeString& oldPath, const VUnicodeString& parent, const VUnicodeString& newLeaf,
                      const VUnicodeString& reference);

}  // namespace connectdialog
