// What the operations on the session tree are made of.
#pragma once

#include "config/isessionconfig.h"
#include "foundation/vunknown.h"
#include "profile/unitofwork.h"
#include "profile/vprofilekey.h"
#include "sessiondb/profilefolderdata.h"

namespace connectdialog {

/// Brings the lists of a folder up to date, makes the change in the tree, and then the change in the lists: a name that
/// was not there before finds its place, one that was keeps it.
template <class ChangeTree, class ChangeLists>
bool ChangeFolder(const VUnicodeString& path, ChangeTree changeTree, ChangeLists changeLists) {
    ProfileFolderData folder(path, false);
    if (!folder.SaveToStore() || !changeTree()) return false;
    changeLists(folder);
    return folder.SaveToStore();
}

/// Makes the key of a folder, with those above it that are missing. Nothing changes when it is there.
bool CreateFolderKey(VProfileStore& store, const VUnicodeString& path);

/// Whether the key is a session's: it has the mark, whatever that holds.
bool HasSessionMark(VProfileKey& key);

/// The session that `key` holds, with that path and leaf name.
VRef<ISessionConfig> LoadSessionFrom(VProfileKey& key, const VUnicodeString& path, const VUnicodeString& leaf);

}  // namespace connectdialog
