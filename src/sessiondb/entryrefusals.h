// What the user is refused when entries are copied, moved or deleted, and in which words. Asked by everything that
// changes the tree for a user, before it calls entryoperations.h.
#pragma once

#include <cstdint>
#include <span>

#include "foundation/vunicodestring.h"

namespace connectdialog {

class VStringArray;

enum class EntryRefusal : std::uint8_t {
    kNone,
    kIntoItself,  ///< a folder into that very folder
    kIntoChild,   ///< a folder into one that lies in it
    kTaken,       ///< a folder where another of that name stands
    kTooDeep,     ///< to where the store has no room so deep
    kTemplate     ///< to the root under the name of the template of new sessions, which it would become
};

/// Whether folders lie in each other too deep for the store to have an entry at `path`. Requires names that can stand.
bool LiesTooDeep(const VUnicodeString& path);

/// Whether the entry at `source` may be copied or moved into the folder `targetFolder`; both are session paths, case is
/// ignored. A session may always: where its name is taken the copy gets another.
EntryRefusal CheckCopy(const VUnicodeString& source, const VUnicodeString& targetFolder);

/// A sentence for the user; empty for kNone. `source` is the refused entry's path.
VUnicodeString DescribeEntryRefusal(EntryRefusal refusal, const VUnicodeString& source);

/// Those of `running`, the sessions that are open in running applications, which are about to be deleted: that are
/// exactly one of `paths`, case ignored. Joined by line feeds; empty when there is none.
VUnicodeString ListEntriesInUse(std::span<const VUnicodeString> paths, const VStringArray& running);
/// The message with which a deletion of entries in use is refused. `entries` is what ListEntriesInUse gave.
VUnicodeString DescribeEntriesInUse(const VUnicodeString& entries);

/// What the user is told when the store refuses a deletion.
inline constexpr char16_t kDeletionFailed[] = u"ERROR: Deletion of folder or session from the database failed";

}  // namespace connectdialog
