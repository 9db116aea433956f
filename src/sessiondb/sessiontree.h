// The session tree in the store: asking, opening, creating and saving single entries.
//
// Free operations over session paths. Each opens its own store and closes it before it returns; none shows a message.
// Missing keys are answered by null, false or nothing. An operation that writes is one unit of work: it stands in the
// store whole or not at all, and its false means that the store refused. Inside a unit of the caller's (see
// VProfileStore::JoinUnitOfWork) a false has dropped what was written before in that unit too: the caller's store then
// refuses more writes, and its Close is false.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

#include "foundation/vunicodestring.h"
#include "foundation/vunknown.h"
#include "imports/connectprotocoltable.h"

namespace connectdialog {

class ISessionConfig;
class VProfileKey;
class VStringArray;

// Asking.

/// Whether there is an entry at `path`, session or folder.
bool SessionKeyExists(const VUnicodeString& path);
bool EntryExistsIn(const VUnicodeString& folder, const VUnicodeString& leaf);
/// True when there is no session at `path`: also where there is nothing at all, but not where the store cannot tell.
bool IsFolderPath(const VUnicodeString& path);
/// Whether an entry can stand in `folder`: neither it nor one round it is a session. What lies below a session is never
/// shown. True also where there is nothing yet.
bool CanHoldEntries(const VUnicodeString& folder);
/// Whether the folder has a child other than exactly "Default" and "__FolderData__", which is one key in any case of
/// letters.
bool FolderHasEntries(const VUnicodeString& path);
/// The same of the folder's key; a key that is not there has none.
bool KeyHasEntries(VProfileKey& folder);
/// Appends the folder's subfolders, in the order in which they are shown.
void EnumerateChildFolders(const VUnicodeString& path, VStringArray& folders);
/// Whether the folder is shown open.
bool ReadIsExpanded(const VUnicodeString& path);
/// Writes only what differs from what reads back. False when the store refused.
bool WriteIsExpanded(const VUnicodeString& path, bool isExpanded);
/// Whether the session has a protocol on the side of the application kind: kNorHalden asks the terminal side, any other
/// the transfer side. A name that the protocol table does not hold is none.
bool SessionHasProtocol(AppKind kind, const VUnicodeString& path);

// Opening.

/// Makes the session that `path` holds, under the leaf name given.
VRef<ISessionConfig> LoadSessionEntry(const VUnicodeString& path, const VUnicodeString& leaf);
/// The session at `path`, or null when there is none. "Default" is made on demand.
VRef<ISessionConfig> OpenSession(const VUnicodeString& path);

using SessionVisitor = void (*)(VProfileKey& key, const VUnicodeString& path, const VUnicodeString& name,
                                void* context);
/// Calls `visit` for each session below `key`, in the store's order and depth first. `prefix` goes before the paths.
void WalkSessions(VProfileKey& key, const VUnicodeString& prefix, SessionVisitor visit, void* context);

// Changing.

/// Saves a session at its path, adding it to its parent's lists when it is new there. Never writes the Default session,
/// which is true.
bool SaveSession(ISessionConfig& config);
/// Creates a folder and places it by InsertEntryName. False where a session stands, and below one.
bool AddFolderEntry(const VUnicodeString& parent, const VUnicodeString& name, const VUnicodeString& reference,
                    bool after);
/// Writes the session whole under that name, gives it that path, and places it by InsertEntryName. A session that is
/// there is replaced. False where a folder stands, and below a session.
bool StoreSessionEntry(const VUnicodeString& parent, const VUnicodeString& name, ISessionConfig& config,
                       const VUnicodeString& reference, bool after);
/// Turns the session into that of an index, with its path; asked once for each, in order. False gives up.
using SessionFiller = std::function<bool(std::size_t index)>;
/// Writes `count` sessions, which one session becomes one after the other, each at its own path, which must lie in
/// `parent`; a session that is there is replaced. False below a session. Places the new ones at the end in the given
/// order. One unit of work and one pass over the folder, however many they are; a session is stored as a copy of the
/// one before with what differs.
bool StoreSessionEntries(const VUnicodeString& parent, ISessionConfig& session, std::size_t count,
                         const SessionFiller& fill);

}  // namespace connectdialog
